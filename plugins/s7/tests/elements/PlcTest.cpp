#include "ElementTree.hpp"

#include "elements/Members.hpp"

namespace corvane::workbench::plugins::s7Driver::testing {
namespace {

constexpr std::string_view kNoAddress = "Please enter the network address of the target PLC";

struct LoadCase {
    std::string_view members;
    std::string_view address;
    int rack;
    int slot;
};

TEST(Plc, BeginsWithoutAnAddressAtRackAndSlotZero) {
    const Plc plc;
    EXPECT_EQ(plc.address, "");
    EXPECT_EQ(plc.rack, 0);
    EXPECT_EQ(plc.slot, 0);
}

TEST(Plc, Loads) {
    const LoadCase cases[] = {
        {"{}", "", 0, 0},
        {R"({"address":"192.168.0.10","rack":1,"slot":2})", "192.168.0.10", 1, 2},
        {R"({"slot":2,"rack":1,"address":"a"})", "a", 1, 2},
        {R"({"hostName":"plc.local"})", "plc.local", 0, 0},
        {R"({"address":"first","hostName":"second"})", "second", 0, 0},
        {R"({"hostName":"first","address":"second"})", "second", 0, 0},
        {R"({"address":"first","address":"second"})", "second", 0, 0},
        {R"({"address":"missing"})", "missing", 0, 0},
        {R"({"address":"Gr\u00f6\u00dfe"})", "Größe", 0, 0},
        {R"({"rack":255,"slot":255})", "", 255, 255},
        {R"({"rack":3.9,"slot":7.0})", "", 3, 7},
        {R"({"rack":2e1,"slot":25.6e10})", "", 2, 25},
        {R"({"rack":1,"rack":2})", "", 2, 0},
        {R"({"rack":0,"slot":0})", "", 0, 0},
    };
    for (const LoadCase& one : cases) {
        SCOPED_TRACE(one.members);
        ElementTree tree;
        const Plc& plc = tree.load<Plc>(nullptr, "PLC", one.members);
        EXPECT_EQ(plc.address, one.address);
        EXPECT_EQ(plc.rack, one.rack);
        EXPECT_EQ(plc.slot, one.slot);
    }
}

TEST(Plc, KeepsTheFieldsOfAbsentMembers) {
    ElementTree tree;
    Plc& plc = tree.load<Plc>(nullptr, "PLC", R"({"address":"a","rack":1,"slot":2})");
    tree.loadMembers(plc, R"({"rack":4})");
    EXPECT_EQ(saved(plc), R"({"address":"a","rack":4,"slot":2})");
}

TEST(Plc, RefusesDocuments) {
    constexpr std::string_view kRack = R"(member "rack": value out of range, expected 0 to 255)";
    constexpr std::string_view kSlot = R"(member "slot": value out of range, expected 0 to 255)";
    const Refusal cases[] = {
        {R"({"rack":256})", kRack},
        {R"({"rack":1000})", kRack},
        {R"({"rack":99999999999999999999})", kRack},
        {R"({"rack":-1})", kRack},
        {R"({"rack":-0})", kRack},
        {R"({"rack":"1"})", kRack},
        {R"({"rack":true})", kRack},
        {R"({"rack":null})", kRack},
        {R"({"rack":[1]})", kRack},
        {R"({"slot":256})", kSlot},
        {R"({"slot":-1})", kSlot},
        {R"({"slot":{}})", kSlot},
        {R"({"port":102})", "unknown member “port”"},
        {R"({"Address":"a"})", "unknown member “Address”"},
        {R"({"hostname":"a"})", "unknown member “hostname”"},
        {R"({"Rack":1})", "unknown member “Rack”"},
        {R"({"":1})", "unknown member “”"},
        {R"({"address":"a","DBNumber":1,"rack":256})", "unknown member “DBNumber”"},
    };
    for (const Refusal& one : cases)
        expectRefusal<Plc>(one);
}

TEST(Plc, RefusesAddressesThatAreNoTexts) {
    for (const std::string_view key : {"address", "hostName"})
        for (const std::string_view value : {"1", "true", "null", "[]", "{}"}) {
            const std::string members =
                std::string("{\"").append(key).append("\":").append(value).append("}");
            SCOPED_TRACE(members);
            ElementTree tree;
            try {
                tree.load<Plc>(nullptr, "PLC", members);
                ADD_FAILURE() << "loaded";
            } catch (const utils::json::decoder::DecodeError& error) {
                EXPECT_EQ(error.member(), key);
            }
        }
}

TEST(Plc, SavesAddressRackAndSlot) {
    ElementTree tree;
    EXPECT_EQ(saved(tree.load<Plc>(nullptr, "PLC", R"({"slot":31,"hostName":"10.0.0.1"})")),
              R"({"address":"10.0.0.1","rack":0,"slot":31})");
    EXPECT_EQ(saved(tree.load<Plc>(nullptr, "PLC", R"({"rack":255,"slot":255})")),
              R"({"address":"missing","rack":255,"slot":255})");
}

TEST(Plc, SavedWithoutAnAddressIsValidWhenLoadedAgain) {
    ElementTree tree;
    const Plc& empty = tree.load<Plc>(nullptr, "empty");
    const Plc& again = tree.load<Plc>(nullptr, "again", saved(empty));
    tree.finish();
    EXPECT_EQ(empty.localPropertyErrorCount(), 1U);
    EXPECT_EQ(again.address, "missing");
    EXPECT_EQ(again.localPropertyErrorCount(), 0U);
}

TEST(Plc, NeedsAnAddress) {
    ElementTree tree;
    Plc& plc = tree.add<Plc>(nullptr, "PLC");
    EXPECT_EQ(errorAt(plc, plc.address), kNoAddress);
    EXPECT_EQ(plc.localPropertyErrorCount(), 1U);

    plc.assign(plc.address, "x");
    EXPECT_EQ(errorAt(plc, plc.address), "");
    EXPECT_EQ(plc.localPropertyErrorCount(), 0U);

    plc.assign(plc.address, "");
    EXPECT_EQ(errorAt(plc, plc.address), kNoAddress);
}

TEST(Plc, TakesAnyRackAndSlot) {
    ElementTree tree;
    const Plc& plc = tree.load<Plc>(nullptr, "PLC", R"({"address":"a","rack":255,"slot":255})");
    tree.finish();
    EXPECT_EQ(plc.localPropertyErrorCount(), 0U);
    EXPECT_EQ(saved(plc), R"({"address":"a","rack":255,"slot":255})");
}

TEST(Plc, TranslatesItsMessage) {
    const MarkingTranslator translator;
    ElementTree tree;
    const Plc& plc = tree.add<Plc>(nullptr, "PLC");
    EXPECT_EQ(errorAt(plc, plc.address),
              "corvane::workbench::plugins::s7Driver::Plc|" + std::string(kNoAddress));
}

TEST(Plc, PublishesItsMembers) {
    const Plc plc;
    expectAttributes(plc, {&model::Attribute::kDeviceState, &kConnectionTime, &kPlcError});
    expectEvents(plc, {&process::Event::kConnected, &process::Event::kDisconnected});
    expectTasks(plc, {&process::Task::kReconnect});
}

TEST(Plc, HasNoImportIdentity) {
    ElementTree tree;
    Plc& plc = tree.load<Plc>(nullptr, "PLC", R"({"address":"a"})");
    const Plc& other = tree.load<Plc>(nullptr, "PLC", R"({"address":"b"})");
    EXPECT_EQ(plc.importId(), std::nullopt);
    EXPECT_FALSE(plc.preserveExistingNameOnImport());
    plc.importMerge(other);
    EXPECT_EQ(plc.address, "a");
}

TEST(Plc, IsCopiedWithAllFields) {
    ElementTree tree;
    const Plc& plc = tree.load<Plc>(nullptr, "PLC", R"({"address":"a","rack":1,"slot":2})");
    const auto copy = plcClass().factory().cloneElement(plc);
    EXPECT_EQ(saved(*copy), R"({"address":"a","rack":1,"slot":2})");
    EXPECT_EQ(copy->modelElement(), nullptr);
}

} // namespace
} // namespace corvane::workbench::plugins::s7Driver::testing
