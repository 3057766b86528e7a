#include "FormTesting.hpp"

#include <unistd.h>

#include <filesystem>
#include <fstream>

namespace corvane::workbench::plugins::s7Driver::testing {
namespace {

constexpr std::string_view kNoAddress = "Please enter the network address of the target PLC";

enum Place : std::uint8_t { kAddress, kRack, kSlot, kImport };

struct PlcForm : ::testing::Test {
    ElementTree tree;
    Plc& plc = tree.add<Plc>(nullptr, "PLC");
    ShownForm form{plc};
};

/// A file that goes when the test ends.
class TemporaryFile {
public:
    explicit TemporaryFile(std::string_view text)
        : path_(std::filesystem::path(::testing::TempDir()) /
                ("plc-form-" + std::to_string(getpid()) + ".db")) {
        std::ofstream(path_) << text;
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() { std::filesystem::remove(path_); }
    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

TEST_F(PlcForm, StaysWithItsPlc) { EXPECT_FALSE(form.moveTo(tree.add<Plc>(nullptr, "Other"))); }

TEST_F(PlcForm, HasFourControlsInOrder) {
    const std::vector<FormRow> expected = {
        {"text", "Address", "The network address used by the S7 plc",
         "This field shows the network address of the S7 plc."},
        {"spin", "Rack number", "The rack number of the S7 plc",
         "This field shows the rack number of the S7 plc."},
        {"spin", "Slot number", "The slot number of the S7 plc",
         "This field shows the slot number of the S7 plc."},
        {"button", "Import DB File",
         "This button allows you to import the data blocks defined in a .db file in structured "
         "text format. Such files can be exported from within the TIA Portal PLC programming "
         "environment, for example.",
         ""},
    };
    EXPECT_EQ(form.rows(), expected);
    for (std::size_t i = 0; i != expected.size(); ++i)
        EXPECT_TRUE(form.at(i).isVisible());
}

TEST_F(PlcForm, HasNoGroup) { EXPECT_EQ(groupedControls(plc), 0); }

TEST_F(PlcForm, HasSpinBoxesOfEightBits) {
    EXPECT_EQ(form.at<ui::SpinBox<std::uint8_t>>(kRack).value(), number(0));
    EXPECT_EQ(form.at<ui::SpinBox<std::uint8_t>>(kSlot).value(), number(0));
}

TEST_F(PlcForm, HasItsEditorsSettings) {
    const auto& address = form.at<ui::TextField>(kAddress).settings();
    EXPECT_EQ(utf8(address.placeholder), "enter the address");
    EXPECT_EQ(address.minimumWidth, 0);
    EXPECT_EQ(address.preferredWidth, 300);
    EXPECT_FALSE(address.fixUp);
    expectSpinBox(form.at<ui::SpinBoxControl>(kRack), 0, 7);
    expectSpinBox(form.at<ui::SpinBoxControl>(kSlot), 0, 31);
    EXPECT_EQ(form.at<ui::PushButton>(kImport).extension(), ".db");
}

TEST_F(PlcForm, RemarksOnAnAddressThatIsNone) {
    const auto& remark = form.at<ui::TextField>(kAddress).settings().remark;
    EXPECT_EQ(utf8(remark()), "") << "an empty address is an error";
    plc.address = "missing";
    EXPECT_EQ(utf8(remark()), kNoAddress);
    plc.address = "missing.example";
    EXPECT_EQ(utf8(remark()), "");
}

TEST_F(PlcForm, IsTranslated) {
    constexpr std::string_view kContext = "corvane::workbench::plugins::s7Driver::Plc";
    expectContext(plc, kContext);
    const MarkingTranslator translator;
    EXPECT_EQ(utf8(ShownForm(plc).at<ui::TextField>(kAddress).settings().placeholder),
              std::string(kContext) + "|enter the address");
}

TEST_F(PlcForm, IsTranslatedOnceWhenItIsBuilt) {
    const auto before = form.rows();
    const MarkingTranslator translator;
    EXPECT_EQ(form.rows(), before);
}

TEST_F(PlcForm, ShowsAndSetsTheAddress) {
    auto& address = form.at(kAddress);
    const Notifications notifications(plc);
    EXPECT_EQ(address.value(), text(u""));
    EXPECT_EQ(reasonOf(address.setValue(text(u"größe.local"))), "");
    EXPECT_EQ(plc.address, "größe.local");
    EXPECT_EQ(address.value(), text(u"größe.local"));
    EXPECT_EQ(notifications.count(plc.address), 1);
    EXPECT_EQ(reasonOf(address.setValue(text(u"größe.local"))), "");
    EXPECT_EQ(notifications.count(plc.address), 1);
}

TEST_F(PlcForm, AsksForTheAddressWhileItIsEmpty) {
    auto& address = form.at(kAddress);
    EXPECT_EQ(errorAt(address), kNoAddress);
    EXPECT_EQ(reasonOf(address.setValue(text(u"x"))), "");
    EXPECT_EQ(errorAt(address), "");
    EXPECT_EQ(reasonOf(address.setValue(text(u""))), "");
    EXPECT_EQ(errorAt(address), kNoAddress);
    for (const auto place : {kRack, kSlot, kImport})
        EXPECT_EQ(errorAt(form.at(place)), "");
}

TEST_F(PlcForm, LimitsRackAndSlot) {
    struct Row {
        Place place;
        const std::uint8_t& field;
        std::uint8_t maximum;
        std::string_view refusal;
    };
    const Row rows[] = {{kRack, plc.rack, 7, "the value must lie between 0 and 7"},
                        {kSlot, plc.slot, 31, "the value must lie between 0 and 31"}};
    for (const Row& row : rows) {
        auto& box = form.at(row.place);
        const Notifications notifications(plc);
        EXPECT_EQ(reasonOf(box.setValue(number(row.maximum))), "");
        EXPECT_EQ(row.field, row.maximum);
        EXPECT_EQ(notifications.count(row.field), 1);
        EXPECT_EQ(reasonOf(box.setValue(number(row.maximum))), "");
        EXPECT_EQ(notifications.count(row.field), 1);

        EXPECT_EQ(reasonOf(box.setValue(number(row.maximum + 1U))), row.refusal);
        EXPECT_EQ(reasonOf(box.setValue(number(256))), row.refusal);
        EXPECT_EQ(row.field, row.maximum);
        EXPECT_EQ(box.value(), number(row.maximum));
        EXPECT_EQ(notifications.count(row.field), 1);

        EXPECT_EQ(reasonOf(box.setValue(number(0))), "");
        EXPECT_EQ(row.field, 0);
    }
}

TEST(PlcFormOfADocument, ShowsNumbersBeyondTheLimits) {
    ElementTree tree;
    Plc& plc = tree.load<Plc>(nullptr, "PLC", R"({"address":"a","rack":8,"slot":255})");
    tree.finish();
    const ShownForm form(plc);
    EXPECT_EQ(form.at(kRack).value(), number(8));
    EXPECT_EQ(form.at(kSlot).value(), number(255));
    EXPECT_EQ(errorAt(form.at(kRack)), "");
    EXPECT_EQ(errorAt(form.at(kSlot)), "");
}

TEST_F(PlcForm, ImportsAFile) {
    const TemporaryFile file("DATA_BLOCK Data\n{ S7_Optimized_Access := 'FALSE' }\nSTRUCT\n"
                             "speed : Int;\nEND_STRUCT;\nBEGIN\nEND_DATA_BLOCK\n");
    const auto document = form.at<ui::PushButton>(kImport).press(file.path());
    ASSERT_TRUE(document) << utf8(document.error().text);
    EXPECT_NE(document->text.find(R"("@Skill.S7.DataBlock")"), std::string::npos);
    EXPECT_NE(document->text.find(R"("speed")"), std::string::npos);
    EXPECT_TRUE(plc.modelElement()->childElements().empty()); // the host's to add
}

TEST_F(PlcForm, ImportsForItsOwnPlc) {
    tree.add<Command>(&plc, "Own");
    const TemporaryFile file("DATA_BLOCK Data\n{ S7_Optimized_Access := 'FALSE' }\nSTRUCT\n"
                             "speed : Int;\nEND_STRUCT;\nBEGIN\nEND_DATA_BLOCK\n");
    const auto document = form.at<ui::PushButton>(kImport).press(file.path());
    ASSERT_TRUE(document) << utf8(document.error().text);
    EXPECT_NE(document->text.find(R"("command":"/PLC/Own")"), std::string::npos) << document->text;
}

TEST_F(PlcForm, SaysWhyAFileIsNotImported) {
    const TemporaryFile file("no data block");
    const auto document = form.at<ui::PushButton>(kImport).press(file.path());
    ASSERT_FALSE(document);
    EXPECT_EQ(utf8(document.error().text), "Error importing S7 data blocks from " +
                                               file.path().native() +
                                               ": Missing DATA_BLOCK declaration ");
}

TEST_F(PlcForm, NeedsAForm) { expectFormNeeded(plc); }

} // namespace
} // namespace corvane::workbench::plugins::s7Driver::testing
