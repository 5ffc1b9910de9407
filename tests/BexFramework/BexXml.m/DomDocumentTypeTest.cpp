// The document type of a document: where it stands in the tree, what it tells, and that a copy of the document has it.

#include <BexDom.h>

#include <gtest/gtest.h>
#include <xercesc/dom/DOMDocumentType.hpp>

#include <XmlText.h>
#include <string>

namespace {

/** The names of the nodes below a document, a blank behind each. */
std::string NodesOf(const DOM_Document& iDocument) {
    std::string names;
    for (DOM_Node node = iDocument.getFirstChild(); node != 0; node = node.getNextSibling()) {
        names += Narrow(node.getNodeName()) + " ";
    }
    return names;
}

std::string OrNone(const XMLCh* iText) {
    return iText == nullptr ? "none" : Narrow(DOMString(iText));
}

/** Name and identifiers of the document type, with bars between. */
std::string TypeOf(const DOM_Document& iDocument) {
    for (DOM_Node node = iDocument.getFirstChild(); node != 0; node = node.getNextSibling()) {
        if (node.getNodeType() == DOM_Node::DOCUMENT_TYPE_NODE) {
            const auto& type = static_cast<const xercesc::DOMDocumentType&>(*node.getNative());
            return OrNone(type.getName()) + "|" + OrNone(type.getPublicId()) + "|" + OrNone(type.getSystemId());
        }
    }
    return "no document type";
}

TEST(DomDocumentType, StandsInTheTreeWhereItStoodInTheText) {
    const struct {
        const char* text;
        const char* nodes;
    } cases[] = {
        {"<!DOCTYPE a><a/>", "a a "},
        {"<?xml version='1.0'?><!DOCTYPE a><a/>", "a a "},
        {"<!--c--><!DOCTYPE a><a/>", "#comment a a "},
        {"<?xml version='1.0'?><!--c--><?p q?><!DOCTYPE a><!--d--><a/><!--e-->", "#comment p a #comment a #comment "},
        {"<?p q?><!--c--><!DOCTYPE t><?r s?><t/>", "p #comment t r t "},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(NodesOf(Parsed(each.text)), each.nodes) << each.text;
    }
}

TEST(DomDocumentType, CopyOfADocumentHasTheSame) {
    const struct {
        const char* text;
        const char* type;
    } cases[] = {
        {"<!DOCTYPE a><a/>", "a|none|none"},
        {"<!--c--><!DOCTYPE a SYSTEM 'file'><a/>", "a|none|file"},
        {"<?p q?><!DOCTYPE a PUBLIC 'id' 'file'><!--c--><a/>", "a|id|file"},
        {"<!DOCTYPE a SYSTEM ''><a/>", "a|none|"},
    };
    for (const auto& each : cases) {
        const DOM_Document document = Parsed(each.text);
        const DOM_Document copy(document.cloneNode(true));
        EXPECT_EQ(TypeOf(document), each.type) << each.text;
        EXPECT_EQ(TypeOf(copy), each.type) << each.text;
        EXPECT_EQ(NodesOf(copy), NodesOf(document)) << each.text;
    }
}

TEST(DomDocumentType, PublicIdentifierHasOnlyTheCharactersThatXmlAllows) {
    const std::string allowed =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789 \r\n-'()+,./:=?;!*#@$_%";
    for (int code = 1; code < 0x80; ++code) {
        const char character = static_cast<char>(code);
        if (character != '"') {
            const std::string text = std::string("<!DOCTYPE a PUBLIC \"x") + character + "y\" 'file'><a/>";
            EXPECT_EQ(Parsed(text).isNull(), allowed.find(character) == std::string::npos) << code;
        }
    }
    EXPECT_TRUE(Parsed("<!DOCTYPE a PUBLIC '\xC3\xA4' 'file'><a/>").isNull());
    EXPECT_TRUE(Parsed("<!DOCTYPE a PUBLIC 'a\"b' 'file'><a/>").isNull());
    EXPECT_FALSE(Parsed("<!DOCTYPE a PUBLIC '' ''><a/>").isNull());
    EXPECT_FALSE(Parsed("<!DOCTYPE a SYSTEM '{\xC3\xA4\\}'><a/>").isNull());
}

TEST(DomDocumentType, SystemIdentifierHasOnlyCharactersOfXml) {
    const auto isRead = [](const std::string& iDeclaration, const std::string& iId) {
        return !Parsed(iDeclaration + "<!DOCTYPE a SYSTEM '" + iId + "'><a/>").isNull();
    };
    for (int code = 1; code < 0x80; ++code) {
        const char character = static_cast<char>(code);
        if (character != '\'') {
            const bool isAllowed = code >= 0x20 || code == '\t' || code == '\n' || code == '\r';
            EXPECT_EQ(isRead("", std::string("x") + character), isAllowed) << code;
            EXPECT_EQ(isRead("<?xml version='1.0'?>", std::string("x") + character), isAllowed) << code;
            EXPECT_EQ(isRead("<?xml version='1.1'?>", std::string("x") + character), isAllowed && code != 0x7F) << code;
        }
    }
    EXPECT_FALSE(isRead("", "\xEF\xBF\xBE"));  // U+FFFE
    EXPECT_TRUE(isRead("", "\xEF\xBF\xBD"));   // U+FFFD
    EXPECT_TRUE(isRead("", "\xF0\x9F\x98\x80"));
    EXPECT_TRUE(isRead("<?xml version='1.0'?>", "\xC2\x81"));
    EXPECT_FALSE(isRead("<?xml version='1.1'?>", "\xC2\x81"));
    EXPECT_TRUE(isRead("<?xml version='1.1'?>", "\xC2\x85\xC2\xA0\xE2\x80\xA8"));
    EXPECT_EQ(ErrorOf("<!DOCTYPE a SYSTEM 'file\x01'><a/>"), "1:21: a character of the document type is not allowed");
}

TEST(DomDocumentType, IsReadInEveryEncoding) {
    const std::u16string text = u"\uFEFF<!--c--><!DOCTYPE \u0161 PUBLIC 'p' '\u20AC'><\u0161/>";
    const DOM_Document wide = Parsed(std::string(reinterpret_cast<const char*>(text.data()), text.size() * 2));
    EXPECT_EQ(NodesOf(wide), "#comment ? ? ");
    EXPECT_EQ(TypeOf(wide), "?|p|?");
    const DOM_Document latin =
        Parsed("<?xml version='1.0' encoding='ISO-8859-1'?><!DOCTYPE \xE9 SYSTEM '\xE8'><\xE9/>");
    EXPECT_EQ(NodesOf(latin), "\xE9 \xE9 ");
    EXPECT_EQ(TypeOf(latin), "\xE9|none|\xE8");
}

TEST(DomDocumentType, CharacterThatTheEncodingDoesNotHaveGivesNoDocument) {
    const std::string declaration = "<?xml version='1.0' encoding='US-ASCII'?>";
    EXPECT_FALSE(Parsed(declaration + "<!DOCTYPE e SYSTEM 'e'><e/>").isNull());
    EXPECT_TRUE(Parsed(declaration + "<!DOCTYPE \xE9 SYSTEM 'e'><e/>").isNull());
    EXPECT_TRUE(Parsed(declaration + "<!DOCTYPE e SYSTEM '\xE9'><e/>").isNull());
}

TEST(DomDocumentType, FlatCopyOfADocumentHasNone) {
    const DOM_Document copy(Parsed("<!DOCTYPE a><!--c--><a/>").cloneNode(false));
    EXPECT_FALSE(copy.isNull());
    EXPECT_EQ(NodesOf(copy), "");
}

}  // namespace
