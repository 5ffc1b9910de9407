#include <BexGuid.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <type_traits>

namespace {

constexpr GUID kGuid = {0x01234567, 0x89AB, 0xCDEF, {0x10, 0x32, 0x54, 0x76, 0x98, 0xBA, 0xDC, 0xFE}};

static_assert(kGuid == GUID{0x01234567, 0x89AB, 0xCDEF, {0x10, 0x32, 0x54, 0x76, 0x98, 0xBA, 0xDC, 0xFE}});
static_assert(!(kGuid != GUID{0x01234567, 0x89AB, 0xCDEF, {0x10, 0x32, 0x54, 0x76, 0x98, 0xBA, 0xDC, 0xFE}}));

TEST(Guid, HasTheUsualLayout) {
    EXPECT_EQ(sizeof(GUID), 16U);
    EXPECT_EQ(sizeof(GUID::Data1), 4U);
    EXPECT_EQ(sizeof(GUID::Data2), 2U);
    EXPECT_EQ(sizeof(GUID::Data3), 2U);
    EXPECT_EQ(sizeof(GUID::Data4), 8U);
    EXPECT_EQ(offsetof(GUID, Data1), 0U);
    EXPECT_EQ(offsetof(GUID, Data2), 4U);
    EXPECT_EQ(offsetof(GUID, Data3), 6U);
    EXPECT_EQ(offsetof(GUID, Data4), 8U);
    EXPECT_TRUE(std::is_trivially_copyable_v<GUID>);
    EXPECT_TRUE(std::is_unsigned_v<decltype(GUID::Data1)>);
}

TEST(Guid, EqualsACopy) {
    const GUID copy = kGuid;
    EXPECT_TRUE(copy == kGuid);
    EXPECT_FALSE(copy != kGuid);
}

struct FieldCase {
    const char* field;
    GUID other;
};

TEST(Guid, DiffersInEveryField) {
    const FieldCase cases[] = {
        {"Data1", {0x01234568, 0x89AB, 0xCDEF, {0x10, 0x32, 0x54, 0x76, 0x98, 0xBA, 0xDC, 0xFE}}},
        {"Data2", {0x01234567, 0x89AC, 0xCDEF, {0x10, 0x32, 0x54, 0x76, 0x98, 0xBA, 0xDC, 0xFE}}},
        {"Data3", {0x01234567, 0x89AB, 0xCDEE, {0x10, 0x32, 0x54, 0x76, 0x98, 0xBA, 0xDC, 0xFE}}},
        {"Data4[0]", {0x01234567, 0x89AB, 0xCDEF, {0x11, 0x32, 0x54, 0x76, 0x98, 0xBA, 0xDC, 0xFE}}},
        {"Data4[7]", {0x01234567, 0x89AB, 0xCDEF, {0x10, 0x32, 0x54, 0x76, 0x98, 0xBA, 0xDC, 0xFF}}},
        {"Data4 turned round", {0x01234567, 0x89AB, 0xCDEF, {0xFE, 0xDC, 0xBA, 0x98, 0x76, 0x54, 0x32, 0x10}}},
        {"Data2 and Data3 exchanged", {0x01234567, 0xCDEF, 0x89AB, {0x10, 0x32, 0x54, 0x76, 0x98, 0xBA, 0xDC, 0xFE}}},
    };
    for (const FieldCase& each : cases) {
        EXPECT_FALSE(each.other == kGuid) << each.field;
        EXPECT_TRUE(each.other != kGuid) << each.field;
        EXPECT_FALSE(kGuid == each.other) << each.field;
    }
}

TEST(Guid, DiffersInEveryBit) {
    for (std::size_t bit = 0; bit < 8 * sizeof(GUID); ++bit) {
        unsigned char bytes[sizeof(GUID)];
        std::memcpy(bytes, &kGuid, sizeof bytes);
        bytes[bit / 8] = static_cast<unsigned char>(bytes[bit / 8] ^ (1U << (bit % 8)));
        GUID other;
        std::memcpy(&other, bytes, sizeof other);
        EXPECT_FALSE(other == kGuid) << bit;
        EXPECT_TRUE(other != kGuid) << bit;
    }
}

}  // namespace
