#include "LibraryTrace.h"
#include "PropertyEntries.h"
#include "TestAction.h"
#include "TestManager.h"

#include <QorWflObjectNameHandlerBase.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

const PropertyEntries kDefaults = {
    {"actionObjects.VERANT_QORModel.*", "KIRVA_MODEL.C_NICKNAME"},
    {"actionObjects.VERANT_QORDocument.*", "DOC*.S_TYPE_REP"},
    {"actionObjects.VERANT_QORFeature.*", "FEAT*.C_NAME"},
};

void InitWith(TestHandler& ioHandler, const PropertyEntries& iEntries) {
    QorWflPropertyFile properties;
    for (const auto& [key, value] : iEntries) {
        properties.SetValue(StringOf(key), StringOf(value));
    }
    ioHandler.Init(properties);
}

TestHandler HandlerOf(const PropertyEntries& iEntries) {
    TestHandler handler;
    InitWith(handler, iEntries);
    return handler;
}

PropertyEntries DefaultsAnd(const PropertyEntries& iEntries) {
    PropertyEntries entries = kDefaults;
    entries.insert(entries.end(), iEntries.begin(), iEntries.end());
    return entries;
}

/** What each of the seven lists holds at one position, in the order of the members. */
std::vector<std::string> MappingAt(const TestHandler& iHandler, int iPos) {
    std::vector<std::string> mapping;
    for (const auto* list : {&iHandler.externalTypes, &iHandler.environments, &iHandler.objectKinds, &iHandler.tables,
                             &iHandler.nameAttributes, &iHandler.typeKeys, &iHandler.objectKeys}) {
        mapping.push_back(NarrowText((*list)[iPos]));
    }
    return mapping;
}

/** The number of mappings, or -1 when the lists are not of one size. */
int MappingCount(const TestHandler& iHandler) {
    const int size = iHandler.externalTypes.Size();
    for (const auto* list : {&iHandler.environments, &iHandler.objectKinds, &iHandler.tables, &iHandler.nameAttributes,
                             &iHandler.typeKeys, &iHandler.objectKeys}) {
        if (list->Size() != size) {
            return -1;
        }
    }
    return size;
}

/** The external type of a block, which lies in memory of exactly its size. */
std::string TypeOfBlock(const TestHandler& iHandler, const std::string& iBlock) {
    const std::unique_ptr<char[]> block(new char[iBlock.size()]);
    std::copy(iBlock.begin(), iBlock.end(), block.get());
    return NarrowText(iHandler.GetExternalType(block.get()));
}

struct KindCase {
    const char* table;
    const char* kind;  // empty: the table has none
};

const KindCase kKinds[] = {
    {"PART_LIST", "Part"},
    {"KIRVA_MODEL", "Model"},
    {"DOC", "Document"},
    {"DOC_STD", "Document"},
    {"DOCX", "Document"},
    {"DOCPART_LIST", "Document"},
    {"DOC ", "Document"},
    {"DOC**", "Document"},
    {"DOC*X", "Document"},
    {"DOCFEAT", "Document"},
    {"FEAT", "Feature"},
    {"FEATURE1", "Feature"},
    {"FEATDOC", "Feature"},
    {"FEAT**", "Feature"},
    {"PART_LIS", ""},
    {"PART_LIST2", ""},
    {"PART_LIST ", ""},
    {" PART_LIST", ""},
    {"Part_List", ""},
    {"PART_LIST*", ""},
    {"KIRVA_MODE", ""},
    {"KIRVA_MODEL1", ""},
    {"KIRVA_MODEL*", ""},
    {"kirva_model", ""},
    {"DO", ""},
    {"Doc", ""},
    {"doc", ""},
    {" DOC", ""},
    {"XDOC", ""},
    {"FEA", ""},
    {"Feat", ""},
    {" FEAT", ""},
    {"ZZ", ""},
    {"*", ""},
    {"MODEL2", ""},
    {"", ""},
};

}  // namespace

TEST(ObjectNameHandlerInit, NoKeysMakeNoMappings) {
    EXPECT_EQ(MappingCount(TestHandler()), 0);
    EXPECT_EQ(MappingCount(HandlerOf({})), 0);
}

TEST(ObjectNameHandlerInit, DefaultsFillAllSevenListsInTheOrderOfTheKeys) {
    const TestHandler handler = HandlerOf(kDefaults);
    ASSERT_EQ(MappingCount(handler), 3);
    EXPECT_THAT(MappingAt(handler, 1), ElementsAre("VERANT_QORModel", "*", "Model", "KIRVA_MODEL", "C_NICKNAME",
                                                   "VERANT_QORModel,*", "*,Model,KIRVA_MODEL"));
    EXPECT_THAT(MappingAt(handler, 2), ElementsAre("VERANT_QORDocument", "*", "Document", "*", "S_TYPE_REP",
                                                   "VERANT_QORDocument,*", "*,Document,*"));
    EXPECT_THAT(MappingAt(handler, 3),
                ElementsAre("VERANT_QORFeature", "*", "Feature", "*", "C_NAME", "VERANT_QORFeature,*", "*,Feature,*"));
}

TEST(ObjectNameHandlerInit, KindComesFromTheTable) {
    for (const KindCase& kindCase : kKinds) {
        const TestHandler handler = HandlerOf({{"actionObjects.T.E", kindCase.table + std::string(".A")}});
        if (*kindCase.kind == '\0') {
            EXPECT_EQ(MappingCount(handler), 0) << kindCase.table;
            continue;
        }
        ASSERT_EQ(MappingCount(handler), 1) << kindCase.table;
        const std::string kind = kindCase.kind;
        const std::string table = kindCase.table;
        EXPECT_THAT(MappingAt(handler, 1), ElementsAre("T", "E", kind, table, "A", "T,E", "E," + kind + "," + table));
    }
}

TEST(ObjectNameHandlerInit, KeyIsCutAtItsLastDot) {
    struct KeyCase {
        const char* key;
        std::vector<std::string> typeAndEnvironment;  // empty: the key is skipped
    };
    const KeyCase cases[] = {
        {"actionObjects.X.E", {"X", "E"}},
        {"actionObjects.X.*", {"X", "*"}},
        {"actionObjects.X.", {"X", ""}},
        {"actionObjects.A.B.C", {"A.B", "C"}},
        {"actionObjects.A..C", {"A.", "C"}},
        {"actionObjects..B.C", {".B", "C"}},
        {"actionObjects...", {".", ""}},
        {"actionObjects...E", {".", "E"}},
        {"actionObjects. . ", {" ", " "}},
        {"actionObjects.actionObjects.X", {"actionObjects", "X"}},
        {"actionObjects.X", {}},
        {"actionObjects.", {}},
        {"actionObjects..", {}},
        {"actionObjects..*", {}},
        {"actionObjects..ENV1", {}},
        {"actionObjects", {}},
        {"actionObjectsX.Y.Z", {}},
        {"actionObject.X.E", {}},
        {"actionobjects.X.E", {}},
        {"ActionObjects.X.E", {}},
        {" actionObjects.X.E", {}},
        {"x.actionObjects.X.E", {}},
        {"actionType", {}},
        {"", {}},
    };
    for (const KeyCase& keyCase : cases) {
        const TestHandler handler = HandlerOf({{keyCase.key, "PART_LIST.A"}});
        std::vector<std::string> found;
        if (MappingCount(handler) == 1) {
            found = {NarrowText(handler.externalTypes[1]), NarrowText(handler.environments[1])};
            EXPECT_EQ(NarrowText(handler.typeKeys[1]), found[0] + "," + found[1]) << keyCase.key;
            EXPECT_EQ(NarrowText(handler.objectKeys[1]), found[1] + ",Part,PART_LIST") << keyCase.key;
        }
        EXPECT_EQ(found, keyCase.typeAndEnvironment) << keyCase.key;
    }
}

TEST(ObjectNameHandlerInit, ValueIsCutAtItsFirstDot) {
    struct ValueCase {
        const char* value;
        std::vector<std::string> tableAndAttribute;  // empty: the key is skipped
    };
    const ValueCase cases[] = {
        {"PART_LIST.C_ID", {"PART_LIST", "C_ID"}},
        {"PART_LIST.C_ID.X", {"PART_LIST", "C_ID.X"}},
        {"PART_LIST..X", {"PART_LIST", ".X"}},
        {"PART_LIST.", {"PART_LIST", ""}},
        {"PART_LIST. C ID ", {"PART_LIST", " C ID "}},
        {"DOC*.", {"*", ""}},
        {"FEAT*.*", {"*", "*"}},
        {"PART_LIST", {}},
        {"PART_LIST,C_ID", {}},
        {"DOC*", {}},
        {".C_ID", {}},
        {".", {}},
        {"", {}},
        {"ZZ.C_ID", {}},
        {"*.C_ID", {}},
    };
    for (const ValueCase& valueCase : cases) {
        const TestHandler handler = HandlerOf({{"actionObjects.T.E", valueCase.value}});
        std::vector<std::string> found;
        if (MappingCount(handler) == 1) {
            found = {NarrowText(handler.tables[1]), NarrowText(handler.nameAttributes[1])};
        }
        EXPECT_EQ(found, valueCase.tableAndAttribute) << valueCase.value;
    }
}

TEST(ObjectNameHandlerInit, UnusableKeysAreSkippedBetweenUsableOnes) {
    const TestHandler handler = HandlerOf({{"actionType", "Design"},
                                           {"actionObjects.A.E", "PART_LIST.N"},
                                           {"actionObjects.B", "PART_LIST.N"},
                                           {"actionObjects.C.E", "PART_LIST"},
                                           {"actionObjects.D.E", "ZZ.N"},
                                           {"actionObjects.F.E", "DOCX.N"}});
    ASSERT_EQ(MappingCount(handler), 2);
    EXPECT_EQ(handler.externalTypes[1], "A");
    EXPECT_EQ(handler.externalTypes[2], "F");
}

TEST(ObjectNameHandlerInit, SecondCallAddsBehindAndLookUpsKeepFindingTheFirst) {
    TestHandler handler = HandlerOf({{"actionObjects.OLD.E", "PART_LIST.OLD_NAME"}});
    InitWith(handler, {{"actionObjects.NEW.E", "PART_LIST.NEW_NAME"}, {"actionObjects.OLD.E", "KIRVA_MODEL.NEWER"}});
    ASSERT_EQ(MappingCount(handler), 3);
    EXPECT_THAT(MappingAt(handler, 2),
                ElementsAre("NEW", "E", "Part", "PART_LIST", "NEW_NAME", "NEW,E", "E,Part,PART_LIST"));
    EXPECT_THAT(MappingAt(handler, 3),
                ElementsAre("OLD", "E", "Model", "KIRVA_MODEL", "NEWER", "OLD,E", "E,Model,KIRVA_MODEL"));
    EXPECT_EQ(handler.GetExternalType("E", "PART_LIST"), "OLD");
    EXPECT_EQ(handler.GetExternalType("E", "KIRVA_MODEL"), "OLD");
    EXPECT_EQ(handler.GetNameAttribute("OLD", "E", "PART_LIST"), "OLD_NAME");
    EXPECT_EQ(handler.GetNameAttribute("OLD", "E", "KIRVA_MODEL"), "");
    EXPECT_EQ(handler.GetNameAttribute("NEW", "E", "PART_LIST"), "NEW_NAME");
}

TEST(ObjectNameHandlerInit, SameTableTwiceAddsTheMappingsTwice) {
    TestHandler handler = HandlerOf(kDefaults);
    InitWith(handler, kDefaults);
    ASSERT_EQ(MappingCount(handler), 6);
    EXPECT_EQ(MappingAt(handler, 1), MappingAt(handler, 4));
}

TEST(ObjectNameHandlerType, DefaultsTypeModelsDocumentsAndFeaturesInAnyEnvironment) {
    const TestHandler handler = HandlerOf(kDefaults);
    for (const char* environment : {"ENV1", "X", "", "*", "ENVIRONMENT9"}) {
        EXPECT_EQ(handler.GetExternalType(environment, "KIRVA_MODEL"), "VERANT_QORModel") << environment;
        EXPECT_EQ(handler.GetExternalType(environment, "DOC_STD"), "VERANT_QORDocument") << environment;
        EXPECT_EQ(handler.GetExternalType(environment, "FEATURE1"), "VERANT_QORFeature") << environment;
        EXPECT_EQ(handler.GetExternalType(environment, "PART_LIST"), "") << environment;
        EXPECT_EQ(handler.GetExternalType(environment, "ZZ"), "") << environment;
        EXPECT_EQ(handler.GetExternalType(environment, "*"), "") << environment;
        EXPECT_EQ(handler.GetExternalType(environment, ""), "") << environment;
    }
}

TEST(ObjectNameHandlerType, NoMappingsTypeNothing) {
    const TestHandler handler;
    EXPECT_EQ(handler.GetExternalType("ENV1", "KIRVA_MODEL"), "");
    EXPECT_EQ(handler.GetExternalType(UuidBlock("DB", "ENV1", "KIRVA_MODEL").c_str()), "");
}

TEST(ObjectNameHandlerType, TableWithoutKindHasNoTypeHoweverTheMappingsAre) {
    const TestHandler handler = HandlerOf({{"actionObjects.T.*", "DOC*.N"},
                                           {"actionObjects.T.E", "DOC*.N"},
                                           {"actionObjects.T.", "FEAT*.N"},
                                           {"actionObjects.P.E", "PART_LIST.N"}});
    for (const KindCase& kindCase : kKinds) {
        if (*kindCase.kind == '\0') {
            EXPECT_EQ(handler.GetExternalType("E", kindCase.table), "") << kindCase.table;
        }
    }
}

TEST(ObjectNameHandlerType, EnvironmentThenTableThenKindDecide) {
    // in the order in which they count
    const PropertyEntries candidates = {{"actionObjects.EnvironmentAndTable.E", "DOCX.N"},
                                        {"actionObjects.EnvironmentAndKind.E", "DOC*.N"},
                                        {"actionObjects.Table.*", "DOCX.N"},
                                        {"actionObjects.Kind.*", "DOC*.N"}};
    const char* const types[] = {"EnvironmentAndTable", "EnvironmentAndKind", "Table", "Kind"};
    for (unsigned present = 0; present < 16; ++present) {
        PropertyEntries entries = {{"actionObjects.OtherTable.E", "DOCY.N"},
                                   {"actionObjects.OtherKind.*", "FEAT*.N"},
                                   {"actionObjects.OtherEnvironment.F", "DOCX.N"}};
        std::string expected;
        for (std::size_t i = candidates.size(); i-- > 0;) {
            if ((present >> i & 1U) != 0) {
                entries.push_back(candidates[i]);
                expected = types[i];
            }
        }
        EXPECT_EQ(NarrowText(HandlerOf(entries).GetExternalType("E", "DOCX")), expected) << present;
        std::reverse(entries.begin(), entries.end());
        EXPECT_EQ(NarrowText(HandlerOf(entries).GetExternalType("E", "DOCX")), expected) << present << " reversed";
    }
}

TEST(ObjectNameHandlerType, FirstOfEqualMappingsCounts) {
    const TestHandler handler = HandlerOf({{"actionObjects.First.E", "DOC*.N"},
                                           {"actionObjects.Second.E", "DOC*.N"},
                                           {"actionObjects.Third.*", "PART_LIST.N"},
                                           {"actionObjects.Fourth.*", "PART_LIST.N"}});
    EXPECT_EQ(handler.GetExternalType("E", "DOC1"), "First");
    EXPECT_EQ(handler.GetExternalType("E", "PART_LIST"), "Third");
}

TEST(ObjectNameHandlerType, ComparesExactly) {
    const TestHandler handler = HandlerOf({{"actionObjects.T.Env", "DOCX.N"}, {"actionObjects.U.", "FEAT*.N"}});
    EXPECT_EQ(handler.GetExternalType("Env", "DOCX"), "T");
    for (const char* environment : {"ENV", "env", "En", "Env ", " Env", "Env2", "", "*"}) {
        EXPECT_EQ(handler.GetExternalType(environment, "DOCX"), "") << environment;
    }
    for (const char* table : {"DOCx", "DOC", "DOCXX", "DOCX ", "DOC*", "docx"}) {
        EXPECT_EQ(handler.GetExternalType("Env", table), "") << table;
    }
    EXPECT_EQ(handler.GetExternalType("", "FEAT1"), "U");
    EXPECT_EQ(handler.GetExternalType(BexUnicodeString(), "FEAT1"), "U");
    EXPECT_EQ(handler.GetExternalType(" ", "FEAT1"), "");
}

TEST(ObjectNameHandlerType, LookUpComparesJoinedTexts) {
    const TestHandler handler = HandlerOf({{"actionObjects.T.A", "DOC,Document,DOCX.N"}});
    EXPECT_EQ(handler.GetExternalType("A", "DOC,Document,DOCX"), "T");
    EXPECT_EQ(handler.GetExternalType("A,Document,DOC", "DOCX"), "T");
}

TEST(ObjectNameHandlerBlock, EnvironmentAndTableAreReadFromTheBlockWithoutTheirPadding) {
    const TestHandler handler =
        HandlerOf(DefaultsAnd({{"actionObjects.PartType.ENV1", "PART_LIST.N"},
                               {"actionObjects.FullWidth.ENVIRON8", "DOC_ABCDEFGHIJKLMN.N"},
                               {"actionObjects.NoEnvironment.", "PART_LIST.N"},
                               {"actionObjects.BlankInFront. ENV", "PART_LIST.N"},
                               {"actionObjects.BlankInside.E V", "DOC A.N"},
                               {std::string("actionObjects.Nul.E\0V", 21), "PART_LIST.N"},
                               {std::string("actionObjects.NulBehind.E\0\0\0\0\0\0\0", 32), "PART_LIST.N"},
                               {"actionObjects.High.\xC4\xD6\xDC", "DOC\xDF.N"}}));
    struct BlockCase {
        std::string environment;
        std::string table;
        const char* type;
    };
    const BlockCase cases[] = {
        {"ENV1", "KIRVA_MODEL", "VERANT_QORModel"},
        {"ANY", "KIRVA_MODEL", "VERANT_QORModel"},
        {"", "KIRVA_MODEL", "VERANT_QORModel"},
        {"ENV1", "DOC_STD", "VERANT_QORDocument"},
        {"ENV1", "FEATURE1", "VERANT_QORFeature"},
        {"ENV1", "PART_LIST", "PartType"},
        {"ENV2", "PART_LIST", ""},
        {"ENV1", "ZZ", ""},
        {"ENV1", "", ""},
        {"ENVIRON8", "DOC_ABCDEFGHIJKLMN", "FullWidth"},
        {"", "PART_LIST", "NoEnvironment"},
        {" ENV", "PART_LIST", "BlankInFront"},
        {"ENV", "PART_LIST", ""},
        {"ENV1", " PART_LIST", ""},
        {"E V", "DOC A", "BlankInside"},
        {"EV", "DOC A", "VERANT_QORDocument"},
        {std::string("E\0V", 3), "PART_LIST", "Nul"},
        {"E", "PART_LIST", ""},
        {std::string(1, 'E') + std::string(7, '\0'), "PART_LIST", "NulBehind"},
        {"ENV1", "PART_LIST" + std::string(9, '\0'), ""},
        {"\xC4\xD6\xDC", "DOC\xDF", "High"},
    };
    for (const BlockCase& blockCase : cases) {
        EXPECT_EQ(TypeOfBlock(handler, UuidBlock("QORDB", blockCase.environment, blockCase.table)), blockCase.type)
            << ::testing::PrintToString(blockCase.environment) << ' ' << ::testing::PrintToString(blockCase.table);
    }
}

TEST(ObjectNameHandlerBlock, OtherFieldsOfTheBlockDoNotCount) {
    const TestHandler handler = HandlerOf({{"actionObjects.T.ENV1", "PART_LIST.N"}});
    const std::string block = UuidBlock("", "ENV1", "PART_LIST").substr(8, 26);
    for (const char filler : {'\0', ' ', 'A', '*', '\xFF'}) {
        EXPECT_EQ(TypeOfBlock(handler, std::string(8, filler) + block + std::string(16, filler)), "T");
    }
}

TEST(ObjectNameHandlerBlock, NullBlockHasNoType) {
    const TestHandler handler = HandlerOf(DefaultsAnd({{"actionObjects.T.", "PART_LIST.N"}}));
    EXPECT_EQ(handler.GetExternalType(static_cast<const char*>(nullptr)), "");
    EXPECT_FALSE(handler.GetExternalType(static_cast<const char*>(nullptr)).IsNull());
}

TEST(ObjectNameHandlerAttribute, TableOfTheMappingMustMatch) {
    const TestHandler handler =
        HandlerOf(DefaultsAnd({{"actionObjects.P.*", "PART_LIST.P_NAME"}, {"actionObjects.D.*", "DOCX.D_NAME"}}));
    struct AttributeCase {
        const char* type;
        const char* table;
        const char* attribute;
    };
    const AttributeCase cases[] = {
        {"VERANT_QORDocument", "DOCX", "S_TYPE_REP"},
        {"VERANT_QORDocument", "DOC", "S_TYPE_REP"},
        {"VERANT_QORDocument", "DOC*", "S_TYPE_REP"},
        {"VERANT_QORDocument", "PART_LIST", ""},
        {"VERANT_QORDocument", "FEATURE1", ""},
        {"VERANT_QORDocument", "KIRVA_MODEL", ""},
        {"VERANT_QORDocument", "ZZ", ""},
        {"VERANT_QORDocument", "*", ""},
        {"VERANT_QORDocument", "", ""},
        {"VERANT_QORFeature", "FEATURE1", "C_NAME"},
        {"VERANT_QORFeature", "DOCX", ""},
        {"VERANT_QORModel", "KIRVA_MODEL", "C_NICKNAME"},
        {"VERANT_QORModel", "MODEL2", ""},
        {"VERANT_QORModel", "kirva_model", ""},
        {"VERANT_QORModel", "*", ""},
        {"P", "PART_LIST", "P_NAME"},
        {"P", "PART_LIST2", ""},
        {"D", "DOCX", "D_NAME"},
        {"D", "DOCY", ""},
        {"Unknown", "DOCX", ""},
        {"verant_qordocument", "DOCX", ""},
        {"", "DOCX", ""},
    };
    for (const AttributeCase& attributeCase : cases) {
        EXPECT_EQ(handler.GetNameAttribute(attributeCase.type, "ENV1", attributeCase.table), attributeCase.attribute)
            << attributeCase.type << ' ' << attributeCase.table;
    }
}

TEST(ObjectNameHandlerAttribute, MappingForTheEnvironmentBeatsTheOneForAny) {
    const TestHandler handler = HandlerOf(DefaultsAnd({{"actionObjects.VERANT_QORModel.ENV1", "KIRVA_MODEL.C_NAME"}}));
    EXPECT_EQ(handler.GetExternalType("ENV1", "KIRVA_MODEL"), "VERANT_QORModel");
    EXPECT_EQ(handler.GetNameAttribute("VERANT_QORModel", "ENV1", "KIRVA_MODEL"), "C_NAME");
    EXPECT_EQ(handler.GetNameAttribute("VERANT_QORModel", "ENV2", "KIRVA_MODEL"), "C_NICKNAME");
    EXPECT_EQ(handler.GetNameAttribute("VERANT_QORModel", "*", "KIRVA_MODEL"), "C_NICKNAME");
    EXPECT_EQ(handler.GetNameAttribute("VERANT_QORModel", "env1", "KIRVA_MODEL"), "C_NICKNAME");
}

TEST(ObjectNameHandlerAttribute, NoFurtherMappingIsTriedWhenTheFirstIsForAnotherTable) {
    const TestHandler handler =
        HandlerOf({{"actionObjects.T.E", "DOCX.SPECIFIC"}, {"actionObjects.T.*", "DOC*.GENERAL"}});
    EXPECT_EQ(handler.GetNameAttribute("T", "E", "DOCX"), "SPECIFIC");
    EXPECT_EQ(handler.GetNameAttribute("T", "E", "DOCY"), "");
    EXPECT_EQ(handler.GetNameAttribute("T", "F", "DOCY"), "GENERAL");
    EXPECT_EQ(handler.GetNameAttribute("T", "*", "DOCY"), "GENERAL");
}

TEST(ObjectNameHandlerAttribute, EmptyEnvironmentAndEmptyAttributeAreLikeOthers) {
    const TestHandler handler = HandlerOf({{"actionObjects.T.", "DOC*.N"}, {"actionObjects.U.E", "DOC*."}});
    EXPECT_EQ(handler.GetNameAttribute("T", "", "DOC1"), "N");
    EXPECT_EQ(handler.GetNameAttribute("T", BexUnicodeString(), "DOC1"), "N");
    EXPECT_EQ(handler.GetNameAttribute("T", "E", "DOC1"), "");
    EXPECT_EQ(handler.GetNameAttribute("U", "E", "DOC1"), "");
}

TEST(ObjectNameHandlerAttribute, LookUpComparesJoinedTexts) {
    const TestHandler handler =
        HandlerOf({{"actionObjects.A.B,C", "DOC*.FIRST"}, {"actionObjects.A,B.C", "DOC*.NEXT"}});
    EXPECT_EQ(handler.GetNameAttribute("A,B", "C", "DOC1"), "FIRST");
    EXPECT_EQ(handler.GetNameAttribute("A", "B,C", "DOC1"), "FIRST");
}

TEST(ObjectNameHandler, LookUpsThatFindNothingGiveEmptyTextsAndNotNull) {
    const TestHandler handlers[] = {TestHandler(), HandlerOf(kDefaults)};
    for (const TestHandler& handler : handlers) {
        for (const char* table : {"ZZ", "PART_LIST", ""}) {
            EXPECT_FALSE(handler.GetExternalType("ENV1", table).IsNull()) << table;
            EXPECT_FALSE(handler.GetExternalType(UuidBlock("DB", "ENV1", table).c_str()).IsNull()) << table;
            EXPECT_FALSE(handler.GetNameAttribute("VERANT_QORModel", "ENV1", table).IsNull()) << table;
            EXPECT_FALSE(handler.GetNameAttribute("Unknown", "ENV1", table).IsNull()) << table;
        }
    }
}

TEST(ObjectNameHandlerInit, PartsOfKeysAndValuesAreEmptyAndNotNull) {
    const TestHandler handler = HandlerOf({{"actionObjects.T.", "PART_LIST."}});
    ASSERT_EQ(MappingCount(handler), 1);
    EXPECT_FALSE(handler.environments[1].IsNull());
    EXPECT_FALSE(handler.nameAttributes[1].IsNull());
    EXPECT_FALSE(handler.GetNameAttribute("T", "", "PART_LIST").IsNull());
}

TEST(ObjectNameHandlerInit, WideCharactersAreNotTakenForTheirLowBytes) {
    // each of these has the low byte of the character in its place
    const struct {
        BexUnicodeString key;
        BexUnicodeString value;
        int mappings;
    } cases[] = {
        {BexUnicodeString(u"actionObjects.\u20AC.\u0141", 17), BexUnicodeString(u"DOC\u012E.N", 6), 1},
        {BexUnicodeString(u"actionObjects\u012ET.E", 17), "PART_LIST.N", 0},
        {BexUnicodeString(u"actionObjects.T\u012EE", 17), "PART_LIST.N", 0},
        {BexUnicodeString(u"\u0161ctionObjects.T.E", 17), "PART_LIST.N", 0},
        {"actionObjects.T.E", BexUnicodeString(u"PART_LIST\u012EN", 11), 0},
        {"actionObjects.T.E", BexUnicodeString(u"PART_LIS\u0154.N", 11), 0},
        {"actionObjects.T.E", BexUnicodeString(u"\u0144OC.N", 5), 0},
    };
    for (const auto& entry : cases) {
        QorWflPropertyFile properties;
        properties.SetValue(entry.key, entry.value);
        TestHandler handler;
        handler.Init(properties);
        EXPECT_EQ(MappingCount(handler), entry.mappings) << entry.key << " " << entry.value;
    }
    QorWflPropertyFile properties;
    properties.SetValue(cases[0].key, cases[0].value);
    TestHandler handler;
    handler.Init(properties);
    const BexUnicodeString type(u"\u20AC", 1);
    EXPECT_EQ(handler.GetExternalType(BexUnicodeString(u"\u0141", 1), BexUnicodeString(u"DOC\u012E", 4)), type);
    EXPECT_EQ(handler.GetExternalType("A", BexUnicodeString(u"DOC\u012E", 4)), "");
    EXPECT_EQ(handler.HasExternalType(type), 1);
    EXPECT_EQ(handler.HasExternalType("?"), 0);
}

TEST(ObjectNameHandler, NoTraceChannelHearsOfIt) {
    const LibraryTrace trace;
    const TestHandler handler = HandlerOf(DefaultsAnd({{"actionObjects.X", "skipped"}}));
    EXPECT_EQ(TypeOfBlock(handler, UuidBlock("DB", "E", "DOC1")), "VERANT_QORDocument");
    EXPECT_EQ(handler.GetNameAttribute("VERANT_QORModel", "E", "ZZ"), "");
    EXPECT_EQ(handler.HasExternalType("X"), 0);
    EXPECT_EQ(trace.Text(), "");
}

TEST(ObjectNameHandlerHasType, TellsWhetherAnyMappingHasTheType) {
    TestHandler handler;
    EXPECT_EQ(handler.HasExternalType("VERANT_QORFeature"), 0);
    EXPECT_EQ(handler.HasExternalType(""), 0);
    InitWith(handler, DefaultsAnd({{"actionObjects.Skipped.E", "ZZ.N"}}));
    for (const char* type : {"VERANT_QORFeature", "VERANT_QORModel", "VERANT_QORDocument"}) {
        EXPECT_EQ(handler.HasExternalType(type), 1) << type;
    }
    for (const char* type : {"Skipped", "verant_qorfeature", "VERANT_QORFeature ", "VERANT_QOR", "", "*"}) {
        EXPECT_EQ(handler.HasExternalType(type), 0) << type;
    }
}

TEST(ObjectNameHandlerSize, AHundredThousandMappingsAreFound) {
    constexpr int kMappings = 100'000;
    QorWflPropertyFile properties;
    for (int i = 1; i <= kMappings; ++i) {
        const std::string number = std::to_string(i);
        properties.SetValue(StringOf("actionObjects.T" + number + ".E" + number), StringOf("DOC*.N" + number));
    }
    TestHandler handler;
    handler.Init(properties);
    ASSERT_EQ(MappingCount(handler), kMappings);
    for (int i = 1; i <= kMappings; ++i) {
        const std::string number = std::to_string(i);
        const BexUnicodeString environment = StringOf("E" + number);
        const BexUnicodeString type = handler.GetExternalType(environment, "DOC1");
        ASSERT_EQ(NarrowText(type), "T" + number);
        ASSERT_EQ(NarrowText(handler.GetNameAttribute(type, environment, "DOC1")), "N" + number);
    }
}
