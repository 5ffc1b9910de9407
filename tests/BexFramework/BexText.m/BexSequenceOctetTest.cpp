#include <BexSequenceOctet.h>

#include <gtest/gtest.h>

#include <climits>
#include <csignal>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace {

_SEQUENCE_octet AllBytes() {
    std::vector<unsigned char> bytes;
    for (unsigned byte = 0; byte <= 0xFF; ++byte) {
        bytes.push_back(static_cast<unsigned char>(byte));
    }
    return _SEQUENCE_octet(bytes.data(), bytes.size());
}

void ExpectAllBytes(const _SEQUENCE_octet& iOctets) {
    ASSERT_EQ(iOctets.length(), 256U);
    for (unsigned long pos = 0; pos < 256; ++pos) {
        ASSERT_EQ(iOctets[pos], pos);
    }
}

TEST(SequenceOctet, DefaultHoldsNoBytes) {
    EXPECT_EQ(_SEQUENCE_octet().length(), 0U);
}

TEST(SequenceOctet, HoldsEveryByteGiven) {
    ExpectAllBytes(AllBytes());
}

TEST(SequenceOctet, CopiesTheBytesGiven) {
    unsigned char bytes[] = {1, 0, 3};
    const _SEQUENCE_octet octets(bytes, sizeof bytes);
    bytes[0] = 9;
    ASSERT_EQ(octets.length(), 3U);
    EXPECT_EQ(octets[0], 1);
    EXPECT_EQ(octets[1], 0);
    EXPECT_EQ(octets[2], 3);
}

TEST(SequenceOctet, NoBytesFromANullPointerOrALengthOfZero) {
    EXPECT_EQ(_SEQUENCE_octet(nullptr, 0).length(), 0U);
    EXPECT_EQ(_SEQUENCE_octet(nullptr, 5).length(), 0U);
    EXPECT_EQ(_SEQUENCE_octet("abc", 0).length(), 0U);
}

TEST(SequenceOctet, NewBytesAreZeroAlsoWhereOthersWereCutOff) {
    _SEQUENCE_octet octets;
    octets.length(3);
    ASSERT_EQ(octets.length(), 3U);
    for (unsigned long pos = 0; pos < 3; ++pos) {
        EXPECT_EQ(octets[pos], 0);
        octets[pos] = 0xAA;
    }
    octets.length(1);
    ASSERT_EQ(octets.length(), 1U);
    octets.length(1000);
    ASSERT_EQ(octets.length(), 1000U);
    EXPECT_EQ(octets[0], 0xAA);
    for (unsigned long pos = 1; pos < 1000; ++pos) {
        ASSERT_EQ(octets[pos], 0) << pos;
    }
    octets.length(0);
    EXPECT_EQ(octets.length(), 0U);
}

TEST(SequenceOctet, IndexGivesTheByteItself) {
    _SEQUENCE_octet octets("abc", 3);
    octets[1] = 'x';
    const _SEQUENCE_octet& same = octets;
    EXPECT_EQ(same[0], 'a');
    EXPECT_EQ(same[1], 'x');
    EXPECT_EQ(same[2], 'c');
    EXPECT_EQ(&same[1], &octets[1]);
}

TEST(SequenceOctet, CopyAndAssignmentAreIndependent) {
    _SEQUENCE_octet source = AllBytes();
    _SEQUENCE_octet copy(source);
    _SEQUENCE_octet assigned("abc", 3);
    assigned = source;
    source[0] = 7;
    source.length(2);
    ExpectAllBytes(copy);
    ExpectAllBytes(assigned);
    copy[1] = 9;
    ExpectAllBytes(assigned);
    assigned = _SEQUENCE_octet();
    EXPECT_EQ(assigned.length(), 0U);
}

TEST(SequenceOctet, AssignmentToItselfKeepsTheBytes) {
    _SEQUENCE_octet octets = AllBytes();
    const _SEQUENCE_octet& itself = octets;
    octets = itself;
    ExpectAllBytes(octets);
}

TEST(SequenceOctet, MoveKeepsTheBytes) {
    _SEQUENCE_octet source = AllBytes();
    _SEQUENCE_octet moved(std::move(source));
    ExpectAllBytes(moved);
    _SEQUENCE_octet assigned;
    assigned = std::move(moved);
    ExpectAllBytes(assigned);
}

TEST(SequenceOctet, LengthThatNoMemoryHoldsIsRefusedWithoutAChange) {
    _SEQUENCE_octet octets = AllBytes();
    EXPECT_THROW(octets.length(ULONG_MAX), std::bad_alloc);
    ExpectAllBytes(octets);
}

TEST(SequenceOctetDeathTest, IndexAtTheLengthSaysSoAndAborts) {
    _SEQUENCE_octet octets("abc", 3);
    const _SEQUENCE_octet& same = octets;
    const char* const message = "(^|\n)operator\\[\\] : %length, %i\n[^\n0-9]*3[^\n0-9]+3[^\n0-9]*\n";
    EXPECT_EXIT((void)octets[3], testing::KilledBySignal(SIGABRT), message);
    EXPECT_EXIT((void)same[3], testing::KilledBySignal(SIGABRT), message);
}

TEST(SequenceOctetDeathTest, IndexPastTheLengthNamesBothNumbers) {
    _SEQUENCE_octet octets("abc", 3);
    const _SEQUENCE_octet& same = octets;
    const char* const message = "(^|\n)operator\\[\\] : %length, %i\n[^\n0-9]*3[^\n0-9]+41[^\n0-9]*\n";
    EXPECT_EXIT((void)octets[41], testing::KilledBySignal(SIGABRT), message);
    EXPECT_EXIT((void)same[41], testing::KilledBySignal(SIGABRT), message);
}

TEST(SequenceOctetDeathTest, EmptyBufferHasNoByteAndTheLargestIndexIsNoNegativeOne) {
    const _SEQUENCE_octet none;
    EXPECT_EXIT((void)none[0], testing::KilledBySignal(SIGABRT),
                "(^|\n)operator\\[\\] : %length, %i\n[^\n0-9]*0[^\n0-9]+0[^\n0-9]*\n");
    EXPECT_EXIT((void)none[ULONG_MAX], testing::KilledBySignal(SIGABRT),
                "(^|\n)operator\\[\\] : %length, %i\n[^\n0-9]*0[^\n0-9]+" + std::to_string(ULONG_MAX) + "[^\n0-9]*\n");
}

}  // namespace
