#include "HostileDocument.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <CapturedStream.h>
#include <XmlText.h>
#include <cstddef>
#include <iostream>
#include <string>

namespace {

using HostileDocument::FileText;

/** The name of a test's document without its folders, for messages and names of tests. */
std::string Stem(const std::string& iName) {
    const std::size_t start = iName.rfind('/') + 1;
    return iName.substr(start, iName.rfind('.') - start);
}

class DamagedDocument : public testing::TestWithParam<std::string> {
protected:
    /** Reads a text in both ways; gives whether it is a document. Errors are told in one line or not at all. */
    bool ExpectReadByTheRules(const std::string& iText) {
        const CapturedStream errors(std::cerr);
        const DOM_Document document = Parsed(iText);
        const bool isDocument = !document.isNull();
        EXPECT_EQ(HostileDocument::Read(iText), isDocument ? HostileDocument::ReadNaively(document) : OldFields());
        EXPECT_EQ(errors.Text(), isDocument ? "" : "getDocument failed\n");
        return isDocument;
    }
};

TEST_P(DamagedDocument, WholeItIsReadByTheRules) {
    const std::string text = FileText(GetParam());
    EXPECT_TRUE(ExpectReadByTheRules(text));
    EXPECT_NE(HostileDocument::Read(text), OldFields());
}

TEST_P(DamagedDocument, CutOffAnywhereItIsNoDocumentAndTheRecordIsUntouched) {
    const std::string text = FileText(GetParam());
    const std::size_t rootEnd = text.rfind('>');
    for (std::size_t length = 0; length < text.size(); ++length) {
        const std::string cut = text.substr(0, length);
        ASSERT_EQ(ExpectReadByTheRules(cut), length > rootEnd) << length;
        ASSERT_FALSE(HasFailure()) << length;
    }
}

TEST_P(DamagedDocument, WithoutItsBeginningItIsReadByTheRules) {
    const std::string text = FileText(GetParam());
    for (std::size_t start = 1; start < text.size(); start += HostileDocument::Step(text, 7)) {
        ExpectReadByTheRules(text.substr(start));
        ASSERT_FALSE(HasFailure()) << start;
    }
}

TEST_P(DamagedDocument, WithAFlippedBitAnywhereItIsReadByTheRules) {
    const std::string text = FileText(GetParam());
    std::size_t documents = 0;
    for (std::size_t bit = 0; bit < text.size() * 8; bit += HostileDocument::Step(text, 7)) {
        std::string flipped = text;
        flipped[bit / 8] = static_cast<char>(flipped[bit / 8] ^ (1 << (bit % 8)));
        documents += ExpectReadByTheRules(flipped) ? 1U : 0U;
        ASSERT_FALSE(HasFailure()) << "byte " << bit / 8 << ", bit " << bit % 8;
    }
    EXPECT_GT(documents, 0U) << "flips in texts and blanks leave a document";
}

TEST_P(DamagedDocument, WithAnyByteAnywhereItIsReadByTheRules) {
    const std::string text = FileText(GetParam());
    constexpr char kBytes[] = {'\0', '\x01', '<', '>', '&', '"', '\x80', '\xC3', '\xFF'};
    for (std::size_t at = 0; at < text.size(); at += HostileDocument::Step(text, 13)) {
        for (const char byte : kBytes) {
            std::string longer = text;
            longer.insert(at, 1, byte);
            ExpectReadByTheRules(longer);
            ASSERT_FALSE(HasFailure()) << at << " " << static_cast<int>(byte);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Examples, DamagedDocument, testing::ValuesIn(HostileDocument::Names()),
                         [](const testing::TestParamInfo<std::string>& iInfo) { return Stem(iInfo.param); });

}  // namespace
