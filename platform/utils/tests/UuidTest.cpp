#include <corvane/utils/core/Uuid.hpp>

#include <gtest/gtest.h>

#include <string_view>
#include <unordered_set>

namespace corvane::utils::core {
namespace {

// The namespaces of RFC 4122, appendix C.
constexpr std::string_view kDns = "6ba7b810-9dad-11d1-80b4-00c04fd430c8";
constexpr std::string_view kUrl = "6ba7b811-9dad-11d1-80b4-00c04fd430c8";

struct NameCase {
    std::string_view space;
    std::string_view name;
    std::string_view uuid;
};

TEST(Uuid, Version5) {
    constexpr NameCase kCases[] = {
        {kDns, "www.example.com", "2ed6657d-e927-568b-95e1-2665a8aea6a2"},
        {kDns, "python.org", "886313e1-3b8a-5372-9b90-0c9aee199e5d"},
        {kUrl, "http://example.com/", "0a300ee9-f9e4-5697-a51a-efc7fafaba67"},
        {kDns, "", "4ebd0208-8328-5d69-8c44-ec50939c0967"},
        {kDns, {"a\0b", 3}, "0a63f66b-e02f-5d2d-9fd4-aad819cf5352"},
        {kDns,
         "Gr\xc3\xb6\xc3\x9f"
         "e",
         "e1aa1205-d4e2-5710-a677-5c65f6628640"},
    };
    for (const auto& [space, name, uuid] : kCases)
        EXPECT_EQ(Uuid::createVersion5(Uuid::parse(space).value(), name).toString(), uuid) << name;
}

TEST(Uuid, Version4IsRandomAndMarked) {
    std::unordered_set<Uuid> all;
    for (unsigned i = 0; i < 100; ++i) {
        const Uuid uuid = Uuid::createVersion4();
        EXPECT_EQ(uuid.rawData()[6] >> 4, 4);
        EXPECT_EQ(uuid.rawData()[8] >> 6, 2);
        all.insert(uuid);
    }
    EXPECT_EQ(all.size(), 100u);
}

TEST(Uuid, TextAndBytesHaveOneOrder) {
    constexpr Uuid kUuid = Uuid::fromRawData({0x00, 0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 0x88,
                                              0x99, 0xaa, 0xbb, 0xcc, 0xdd, 0xee, 0xff});
    EXPECT_EQ(kUuid.toString(), "00112233-4455-6677-8899-aabbccddeeff");
    EXPECT_EQ(Uuid::parse("00112233-4455-6677-8899-aabbccddeeff"), kUuid);
    EXPECT_EQ(Uuid::parse("00112233-4455-6677-8899-AABBCCDDEEFF"), kUuid);
}

TEST(Uuid, DefaultIsNil) {
    EXPECT_EQ(Uuid().toString(), "00000000-0000-0000-0000-000000000000");
    EXPECT_EQ(Uuid::parse("00000000-0000-0000-0000-000000000000"), Uuid());
}

TEST(Uuid, ParsesTheCanonicalFormOnly) {
    constexpr std::string_view kOthers[] = {
        "",
        "00112233-4455-6677-8899-aabbccddeef",
        "00112233-4455-6677-8899-aabbccddeefff",
        "{00112233-4455-6677-8899-aabbccddeeff}",
        "00112233445566778899aabbccddeeff",
        "00112233445566778899aabbccddeeff0000",
        "0011223-34455-6677-8899-aabbccddeeff",
        "00112233-4455-6677-8899-aabbccddeefg",
        " 0112233-4455-6677-8899-aabbccddeeff",
        "0x112233-4455-6677-8899-aabbccddeeff",
        "-0112233-4455-6677-8899-aabbccddeeff",
        "00112233-4455-6677-8899-+abbccddeeff",
        "00112233-4455-6677-8899-aabbccddee\xc3\xa9",
        "00112233-4455-6677-8899-aabbccddeef ",
        {"00112233-4455-6677-8899-aabbccddee\0f", 36},
    };
    for (const auto text : kOthers)
        EXPECT_EQ(Uuid::parse(text), std::nullopt) << text;
}

TEST(Uuid, OrdersByItsBytes) {
    const Uuid low = Uuid::parse("00000000-0000-0000-0000-0000000000ff").value();
    const Uuid high = Uuid::parse("00000000-0000-0000-0000-000000000100").value();
    EXPECT_LT(low, high);
    EXPECT_LT(Uuid(), low);
    EXPECT_NE(std::hash<Uuid>{}(low), std::hash<Uuid>{}(high));
}

} // namespace
} // namespace corvane::utils::core
