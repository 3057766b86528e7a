#include "PrepareTesting.hpp"

#include <gtest/gtest.h>

#include <ostream>

// Every form that sources take, and the addresses that come of it.

namespace corvane::workbench::plugins::s7Driver::prepare {
namespace {

using testing::blockOf;
using testing::blockWith;
using testing::Files;
using testing::one;
using testing::typeOf;

struct Form {
    std::string name;
    Files files;
    std::vector<std::string> items;
    Options options = {};

    friend std::ostream& operator<<(std::ostream& stream, const Form& form) {
        return stream << form.name;
    }
};

const std::string kPair = "b : Bool;\ni : Int;";

std::vector<std::string> pairAt(const std::string& name, int byte) {
    const std::string begin = std::to_string(byte);
    const std::string next = std::to_string(byte + 2);
    return {"Data {", name + " {", "b Bool DB" + begin + ".0", "i Int DB" + next};
}

std::vector<Form> typeForms() {
    return {
        {"quoted", one(typeOf("\"T\"", kPair) + blockOf("x : \"T\";")), pairAt("x", 0)},
        {"numbered", one(typeOf("UDT 10", kPair) + blockOf("x : UDT 10;")), pairAt("x", 0)},
        {"glued", one(typeOf("UDT 10", kPair) + blockOf("x : UDT10;")), pairAt("x", 0)},
        {"bare", one(typeOf("T", kPair) + blockOf("x : T;")), pairAt("x", 0)},
        {"other_case", one(typeOf("\"T\"", kPair) + blockOf("x : \"t\";")), pairAt("x", 0)},
        {"forward", one(blockOf("x : \"T\";") + typeOf("\"T\"", kPair)), pairAt("x", 0)},
        {"other_file",
         {{"a.db", blockOf("x : \"T\";")}, {"T.udt", typeOf("\"T\"", kPair)}},
         pairAt("x", 0)},
        {"byte_order_mark", one("\xEF\xBB\xBF" + typeOf("\"T\"", kPair) + blockOf("x : \"T\";")),
         pairAt("x", 0)},
        {"begins_even",
         one(typeOf("\"T\"", kPair) + blockOf("a : Byte;\nx : \"T\";")),
         {"Data {", "a Byte DB0", "x {", "b Bool DB2.0", "i Int DB4"}},
        {"takes_even",
         one(typeOf("\"T\"", "a : Byte;") + blockOf("x : \"T\";\ny : Byte;")),
         {"Data {", "x {", "a Byte DB0", "y Byte DB2"}},
        {"array",
         one(typeOf("\"T\"", "a : Byte;") + blockOf("x : Array[1..2] of \"T\";")),
         {"Data {", "x[1] {", "a Byte DB0", "x[2] {", "a Byte DB2"}},
        {"nested",
         one(typeOf("\"T\"", "u : \"U\";\na : Byte;") + typeOf("\"U\"", kPair) +
             blockOf("x : \"T\";")),
         {"Data {", "x {", "u {", "b Bool DB0.0", "i Int DB2", "a Byte DB4"}},
        {"end_without_semicolon",
         one("TYPE \"T\"\nSTRUCT\na : Struct\nb : Bool;\nEND_STRUCT\nEND_STRUCT\nEND_TYPE\n" +
             blockOf("x : \"T\";")),
         {"Data {", "x {", "a {", "b Bool DB0.0"}},
        {"start_values",
         one(typeOf("\"T\"", "a : Int := 5;\ns : String[4] := 'a;b';") + blockOf("x : \"T\";")),
         {"Data {", "x {", "a Int DB0", "s String DB2"}},
        {"title",
         one("TYPE \"T\"\nTITLE = it's ( \"x\nVERSION : 0.1\nSTRUCT\na : Int;\n"
             "END_STRUCT;\nEND_TYPE\n" +
             blockOf("x : \"T\";")),
         {"Data {", "x {", "a Int DB0"}},
        {"attributes",
         one(typeOf("\"T\"", kPair) + blockOf("x { S7_SetPoint := 'False'} : \"T\";")),
         pairAt("x", 0)},
        {"repeated",
         one(typeOf("\"T\"", kPair) + typeOf("\"T\"", "b:BOOL; i : INT; // same") +
             blockOf("x : \"T\";")),
         pairAt("x", 0)},
    };
}

std::vector<Form> blockForms() {
    const std::string interface = "FUNCTION_BLOCK \"F\"\nVAR\ns : Byte;\nEND_VAR\n"
                                  "VAR_INPUT\ni : Bool;\nEND_VAR\nVAR_OUTPUT\no : Bool;\nEND_VAR\n"
                                  "VAR_IN_OUT\nr : Real;\nt : \"T\";\nEND_VAR\n"
                                  "VAR_TEMP\nx : R_TRIG;\nEND_VAR\n"
                                  "VAR CONSTANT\nN : Int := 3;\nEND_VAR\n"
                                  "BEGIN\n#s := 'it''s'; (* END_FUNCTION_BLOCK *)\n"
                                  "END_FUNCTION_BLOCK\n";
    const std::vector<std::string> instance{"Data {", "i Bool DB0.0", "o Bool DB2.0", "r Real DB4",
                                            "s Byte DB14"};
    return {
        {"sections",
         one(blockWith("VAR\na : Bool;\nEND_VAR\nVAR RETAIN\nb : Bool;\nEND_VAR")),
         {"Data {", "a Bool DB0.0", "b Bool DB0.1"}},
        {"of_type",
         one(typeOf("\"T\"", kPair) + blockWith("NON_RETAIN\n\"T\"")),
         {"Data {", "b Bool DB0.0", "i Int DB2"}},
        {"of_numbered_type",
         one(typeOf("UDT 3", kPair) + blockWith("UDT 3")),
         {"Data {", "b Bool DB0.0", "i Int DB2"}},
        {"instance", one(interface + typeOf("\"T\"", kPair) + blockWith("\"F\"")), instance},
        {"instance_in_block",
         one(interface + typeOf("\"T\"", kPair) + blockOf("a : Bool;\nf : \"F\";\nb : Bool;")),
         {"Data {", "a Bool DB0.0", "f {", "i Bool DB2.0", "o Bool DB4.0", "r Real DB6",
          "s Byte DB16", "b Bool DB18.0"}},
        {"numbered_instance",
         one("function_block fb40\nvar_input\nx:int;\nend_var\nbegin\nend_function_block\n" +
             blockWith("fb40 // comment")),
         {"Data {", "x Int DB0"}},
    };
}

std::vector<Form> classicForms() {
    return {
        {"code_around",
         one("FUNCTION \"C\" : Void\nVAR_INPUT\nx : Int;\nEND_VAR\nBEGIN\nNETWORK\n"
             "TITLE = don't (* open\n  DATA := \"DATA_BLOCK\";\nEND_FUNCTION\n" +
             blockOf("x : Int;") +
             "ORGANIZATION_BLOCK OB 1\nBEGIN\n  CALL SFC 46 // STOP\nEND_ORGANIZATION_BLOCK\n"),
         {"Data {", "x Int DB0"}},
        {"classic",
         one("data_block db20\t//comment\nstruct\nd1:int;\nd2:int;\nend_struct\n\nbegin\n"
             "end_data_block"),
         {"DB20 {", "d1 Int DB0", "d2 Int DB2"},
         {.standardAccess = true, .constants = {}, .blocks = {}}},
        {"numbered_block",
         one("DATA_BLOCK DB 1\n\tTITLE\t= This is the title\n\tAUTHOR : This is the author\n"
             "\tVERSION : 0.1\n\tKNOW_HOW_PROTECT\n\tSTRUCT\n\t\ta\t: INT;\n\tEND_STRUCT;\nBEGIN\n"
             "END_DATA_BLOCK\n"),
         {"DB1 {", "a Int DB0"},
         {.standardAccess = true, .constants = {}, .blocks = {}}},
        {"one_line",
         one("DATA_BLOCK \"A\" { S7_Optimized_Access := 'FALSE' } VERSION : 0.1 STRUCT "
             "a : Int; END_STRUCT; BEGIN a := 5; END_DATA_BLOCK"),
         {"A {", "a Int DB0"}},
        {"carriage_returns",
         one("DATA_BLOCK \"A\"\r{ S7_Optimized_Access := 'FALSE' }\rSTRUCT\r"
             "a : Int; // x\rb : Int;\rEND_STRUCT;\rBEGIN\rEND_DATA_BLOCK\r"),
         {"A {", "a Int DB0", "b Int DB2"}},
        {"name_list",
         one(blockOf("a, b : Int;\nc : Bool;")),
         {"Data {", "a Int DB0", "b Int DB2", "c Bool DB4.0"}},
        {"view",
         one("FUNCTION_BLOCK \"F\"\nVAR\nw : Word;\nv AT w : Array[0..15] of Bool;\n"
             "x : Int;\nEND_VAR\nEND_FUNCTION_BLOCK\n" +
             blockWith("\"F\"")),
         {"Data {", "w Word DB0", "x Int DB2"}},
        {"wanted",
         one(blockOf("a : Int;") + "DATA_BLOCK DB 7\nSTRUCT\nEND_STRUCT;\n"
                                   "BEGIN\nEND_DATA_BLOCK\n"),
         {"Data {", "a Int DB0"},
         {.constants = {}, .blocks = {"data"}}},
        {"windows_1252",
         one(blockOf("M\xFCll : Int; // \x80\n\"\xC3\x9F\" : Int;")),
         {"Data {", "Müll Int DB0", "ß Int DB2"}},
        {"quoted_names",
         one(blockOf("\"X2.3 a\" : Int;\n\"struct\" : Int;\n\"1\" : Int;")),
         {"Data {", "X2.3 a Int DB0", "struct Int DB2", "1 Int DB4"}},
        {"odd_names",
         one(blockOf("a-b : Int;\nc.d : Int;")),
         {"Data {", "a-b Int DB0", "c.d Int DB2"}},
    };
}

std::vector<Form> boundForms() {
    const std::vector<std::string> two{"Data {", "a[1] Int DB0", "a[2] Int DB2"};
    const Options n{.constants = {{"N", 2}}, .blocks = {}};
    return {
        {"constant", one(blockOf("a : Array[1..\"N\"] of Int;")), two, n},
        {"bare_constant", one(blockOf("a : Array[1..n] of Int;")), two, n},
        {"local_constant", one(blockOf("a : Array[1..#N] of Int;")), two, n},
        {"sum", one(blockOf("a : Array[\"N\" - 1 .. N] of Int;")), two, n},
        {"length",
         one(blockOf("s : String[\"N\"];\nb : Byte;")),
         {"Data {", "s String DB0", "b Byte DB4"},
         n},
        {"own_constant",
         one("FUNCTION_BLOCK \"F\"\nVAR\na : Array[1..#M] of Int;\nEND_VAR\n"
             "VAR CONSTANT\nM : Int := 2;\nEND_VAR\nEND_FUNCTION_BLOCK\n" +
             blockWith("\"F\"")),
         two},
        {"blanks", one(blockOf("a : ARRAY  [1 .. 2 ] OF INT ;")), two},
        {"negative",
         one(blockOf("a : Array[-1..0] of Int;")),
         {"Data {", "a[-1] Int DB0", "a[0] Int DB2"}},
    };
}

std::vector<Form> accessForms() {
    const std::string source =
        blockOf("a : Bool;\nh { ExternalAccessible := 'False'} : Bool;\nb : Bool;");
    return {
        {"hidden", one(source), {"Data {", "a Bool DB0.0", "b Bool DB0.1"}},
        {"shown",
         one(source),
         {"Data {", "a Bool DB0.0", "h Bool DB0.1", "b Bool DB0.2"},
         {.showHidden = true, .constants = {}, .blocks = {}}},
    };
}

/// A row of the table of system types: its members, and where the next byte stands.
Form systemForm(const std::string& type, std::vector<std::string> items, int next) {
    items.insert(items.begin(), "Data {");
    items.push_back("z Byte DB" + std::to_string(next));
    return {type, one(blockOf("x : " + type + ";\nz : Byte;")), std::move(items)};
}

std::vector<Form> systemForms() {
    std::vector<Form> forms;
    for (const char* const type :
         {"IEC_TIMER", "TON_TIME", "TOF_TIME", "TP_TIME", "TONR_TIME", "TON", "TOF", "TP", "TONR"})
        forms.push_back(systemForm(type,
                                   {"x {", "start DWord DB0", "PT UDInt DB4", "ET UDInt DB8",
                                    "running Bool DB12.0", "IN Bool DB12.1", "Q Bool DB12.2"},
                                   16));
    const auto counter = [&](const char* type, const std::string& number, int size, int next) {
        forms.push_back(systemForm(type,
                                   {"x {", "CU Bool DB0.0", "CD Bool DB0.1", "R Bool DB0.2",
                                    "LD Bool DB0.3", "QU Bool DB0.4", "QD Bool DB0.5",
                                    "PV " + number + " DB" + std::to_string(size),
                                    "CV " + number + " DB" + std::to_string(2 * size)},
                                   next));
    };
    for (const char* const type :
         {"IEC_COUNTER", "CTU", "CTD", "CTUD", "CTU_INT", "CTD_INT", "CTUD_INT"})
        counter(type, "Int", 2, 6);
    for (const char* const type : {"IEC_UCOUNTER", "CTU_UINT", "CTD_UINT", "CTUD_UINT"})
        counter(type, "UInt", 2, 6);
    counter("IEC_SCOUNTER", "SInt", 1, 4);
    counter("IEC_USCOUNTER", "USInt", 1, 4);
    counter("IEC_DCOUNTER", "DInt", 4, 12);
    counter("IEC_UDCOUNTER", "UDInt", 4, 12);
    for (const char* const type :
         {"HW_ANY", "HW_SUBMODULE", "OB_ANY", "OB_CYCLIC", "DB_ANY", "DB_WWW", "PIP", "PORT", "RTM",
          "CONN_ANY", "CONN_OUC", "CONN_PRG"})
        forms.push_back(systemForm(type, {"x UInt DB0"}, 2));
    for (const char* const type : {"CONN_R_ID", "AOM_IDENT", "EVENT_ANY", "EVENT_HWINT"})
        forms.push_back(systemForm(type, {"x UDInt DB0"}, 4));
    forms.push_back(systemForm("TOD", {"x UDInt DB0"}, 4));
    forms.push_back(systemForm("LTOD", {"x ULInt DB0"}, 8));
    forms.push_back(systemForm("DT", {}, 8));
    forms.push_back(systemForm("ErrorStruct", {}, 28));
    forms.push_back(systemForm("CREF", {}, 8));
    forms.push_back(systemForm("NREF", {}, 8));
    forms.push_back(systemForm("VREF", {}, 12));
    forms.push_back(systemForm("ANY", {}, 10));
    forms.push_back(systemForm("POINTER", {}, 6));
    return forms;
}

class PrepareFormTest : public ::testing::TestWithParam<Form> {};

TEST_P(PrepareFormTest, HasTheAddressesOfThePlc) {
    const Form& form = GetParam();
    const ui::PreparedSource prepared = prepareSources(form.files, form.options);
    EXPECT_EQ(testing::leftOutOf(form.files, prepared), std::vector<std::string>());
    ASSERT_NE(prepared.text, "");
    EXPECT_EQ(testing::importedItems(prepared.text), form.items) << prepared.text;
}

TEST_P(PrepareFormTest, IsPlainOncePrepared) {
    const Form& form = GetParam();
    const ui::PreparedSource prepared = prepareSources(form.files, form.options);
    EXPECT_EQ(prepareSources(one(prepared.text), {}).text, prepared.text);
}

const auto kName = [](const auto& form) { return form.param.name; };
INSTANTIATE_TEST_SUITE_P(Types, PrepareFormTest, ::testing::ValuesIn(typeForms()), kName);
INSTANTIATE_TEST_SUITE_P(Blocks, PrepareFormTest, ::testing::ValuesIn(blockForms()), kName);
INSTANTIATE_TEST_SUITE_P(Classic, PrepareFormTest, ::testing::ValuesIn(classicForms()), kName);
INSTANTIATE_TEST_SUITE_P(Bounds, PrepareFormTest, ::testing::ValuesIn(boundForms()), kName);
INSTANTIATE_TEST_SUITE_P(Access, PrepareFormTest, ::testing::ValuesIn(accessForms()), kName);
INSTANTIATE_TEST_SUITE_P(System, PrepareFormTest, ::testing::ValuesIn(systemForms()), kName);

} // namespace
} // namespace corvane::workbench::plugins::s7Driver::prepare
