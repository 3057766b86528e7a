#pragma once

#include "dbimport/facts/TypeTable.hpp"
#include "dbimport/facts/VariableDeclaration.hpp"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

/// Declarations of scalars, and what is close to one: for the tests of the short way to read them,
/// and for those that compare it with the grammar.
namespace corvane::workbench::plugins::s7Driver::testing {

struct PlainCase {
    std::string_view text; ///< up to the semicolon
    std::string_view name;
    S7DataType type;
    ExternalAccess access;
    std::optional<std::uint64_t> elementCount;
};

inline constexpr ExternalAccess kFree{true, true};
inline constexpr ExternalAccess kReadOnly{true, false};
inline constexpr ExternalAccess kHidden{false, true};
inline constexpr ExternalAccess kClosed{false, false};

/// Read on the short way.
inline constexpr std::array kPlainCases = {
    PlainCase{"Speed : Int;", "Speed", S7DataType::Int, kFree, {}},
    PlainCase{"Speed:Int;", "Speed", S7DataType::Int, kFree, {}},
    PlainCase{"Speed   :   Int   ;", "Speed", S7DataType::Int, kFree, {}},
    PlainCase{"x:Bool;", "x", S7DataType::Bool, kFree, {}},
    PlainCase{"_1 : dInT;", "_1", S7DataType::DInt, kFree, {}},
    PlainCase{"7th : LREAL;", "7th", S7DataType::LReal, kFree, {}},
    PlainCase{"A_name_of_exactly_32_characters_ : Word;",
              "A_name_of_exactly_32_characters_",
              S7DataType::Word,
              kFree,
              {}},
    PlainCase{"Int : Int;", "Int", S7DataType::Int, kFree, {}},
    PlainCase{"structs : Byte;", "structs", S7DataType::Byte, kFree, {}},
    PlainCase{"END_STRUCT_ : Byte;", "END_STRUCT_", S7DataType::Byte, kFree, {}},
    PlainCase{"Stamp : Date_And_Time;", "Stamp", S7DataType::DateAndTime, kFree, {}},
    PlainCase{"Noon : LTime_Of_Day := 12;", "Noon", S7DataType::ULInt, kFree, {}},
    // Attributes.
    PlainCase{"Speed { ExternalWritable := 'False'} : Int := 100;",
              "Speed",
              S7DataType::Int,
              kReadOnly,
              {}},
    PlainCase{
        "Speed{ExternalWritable:='False'}:Int:=100;", "Speed", S7DataType::Int, kReadOnly, {}},
    PlainCase{
        "a  {  EXTERNALACCESSIBLE  :=  'FALSE'  }  : Real;", "a", S7DataType::Real, kHidden, {}},
    PlainCase{"a { ExternalAccessible := 'False'; ExternalWritable := 'False'} : Int;",
              "a",
              S7DataType::Int,
              kClosed,
              {}},
    PlainCase{"a {ExternalVisible := 'False';ExternalWritable := 'false'} : Int;",
              "a",
              S7DataType::Int,
              kReadOnly,
              {}},
    PlainCase{"a { ExternalWritable := 'False'; ExternalWritable := 'True'} : Int;",
              "a",
              S7DataType::Int,
              kFree,
              {}},
    PlainCase{"a { ExternalWritable := 'True'; ExternalWritable := 'False'} : Int;",
              "a",
              S7DataType::Int,
              kReadOnly,
              {}},
    PlainCase{"a { ExternalWritable := ' False'} : Int;", "a", S7DataType::Int, kFree, {}},
    PlainCase{"a { ExternalWritable := ''} : Int;", "a", S7DataType::Int, kFree, {}},
    PlainCase{"a { STRUCT := 'x } ; : // (* y *)'} : Int;", "a", S7DataType::Int, kFree, {}},
    PlainCase{"a { S7_SetPoint := 'line\nline'} : Int;", "a", S7DataType::Int, kFree, {}},
    PlainCase{
        "a { An_attribute_with_a_long_name_1 := 'x'} : Int;", "a", S7DataType::Int, kFree, {}},
    // Texts and their lengths.
    PlainCase{"t : String;", "t", S7DataType::String, kFree, {}},
    PlainCase{"t : String[20];", "t", S7DataType::String, kFree, 20},
    PlainCase{"t : WSTRING [ 0 ] ;", "t", S7DataType::WString, kFree, 0},
    PlainCase{"t : String[007] := 'bond';", "t", S7DataType::String, kFree, 7},
    PlainCase{"t : String[999999999];", "t", S7DataType::String, kFree, 999'999'999},
    PlainCase{"t { ExternalWritable := 'False'} : String[3] := 'a b; c';", "t", S7DataType::String,
              kReadOnly, 3},
    // Initial values.
    PlainCase{"a : Int := 5;", "a", S7DataType::Int, kFree, {}},
    PlainCase{"a : Int := -5 ;", "a", S7DataType::Int, kFree, {}},
    PlainCase{"a : Int := ;", "a", S7DataType::Int, kFree, {}},
    PlainCase{"a : Int :=;", "a", S7DataType::Int, kFree, {}},
    PlainCase{"a : Real := 1.5E+3;", "a", S7DataType::Real, kFree, {}},
    PlainCase{"a : Time := T#1d_2h_3m_4s_5ms_and_some_more;", "a", S7DataType::UDInt, kFree, {}},
    PlainCase{"a : Int := \"Limit\".Upper[1]:x={};", "a", S7DataType::Int, kFree, {}},
    PlainCase{"a : Int := \xC3\xA4;", "a", S7DataType::Int, kFree, {}},
    PlainCase{"a : Char := CHAR#'x';", "a", S7DataType::USInt, kFree, {}},
    PlainCase{"a : Char := ' ';", "a", S7DataType::USInt, kFree, {}},
    PlainCase{"a : String := '';", "a", S7DataType::String, kFree, {}},
    PlainCase{"a : String := 'STRUCT /(* \xC3\xA4\n';", "a", S7DataType::String, kFree, {}},
};

struct OtherCase {
    std::string_view why;
    std::string_view text;
};

/// Left to the grammar, which takes some of them and refuses the others.
inline constexpr std::array kOtherCases = {
    OtherCase{"nothing", ""},
    OtherCase{"leading blank", " a : Int;"},
    OtherCase{"leading line", "\na : Int;"},
    OtherCase{"leading comment", "// x\na : Int;"},
    OtherCase{"quoted name", "\"a\" : Int;"},
    OtherCase{"quoted name with a blank", "\"a b\" : Int;"},
    OtherCase{"no name", ": Int;"},
    OtherCase{"no name, attributes", "{ A := 'x'} : Int;"},
    OtherCase{"end of the structure", "END_STRUCT;"},
    OtherCase{"end of the structure, no semicolon", "End_Struct\n"},
    OtherCase{"keyword as name", "END_STRUCT : Int;"},
    OtherCase{"keyword as name", "STRUCT : Int;"},
    OtherCase{"keyword as name", "Begin : Int;"},
    OtherCase{"keyword as name", "oF : Int;"},
    OtherCase{"keyword as name", "array : Int;"},
    OtherCase{"keyword as name", "DATA_BLOCK : Int;"},
    OtherCase{"keyword as name", "END_DATA_BLOCK : Int;"},
    OtherCase{"name with other characters", "a.b : Int;"},
    OtherCase{"name with other characters", "a-b : Int;"},
    OtherCase{"name with other characters", "a/b : Int;"},
    OtherCase{"name with other characters", "a(b : Int;"},
    OtherCase{"name with other characters", "@a : Int;"},
    OtherCase{"name with a quote", "a\"b : Int;"},
    OtherCase{"name beyond ASCII", "K\xC3\xBChlung : Int;"},
    OtherCase{"name beyond ASCII", "\xFF : Int;"},
    OtherCase{"two names", "a b : Int;"},
    OtherCase{"comment behind the name", "a (* x *) : Int;"},
    OtherCase{"comment behind the name", "a// x\n : Int;"},
    OtherCase{"line ending behind the name", "a\n : Int;"},
    OtherCase{"tab behind the name", "a\t: Int;"},
    OtherCase{"no colon", "a Int;"},
    OtherCase{"no colon", "a;"},
    OtherCase{"no colon behind the attributes", "a { A := 'x'} Int;"},
    OtherCase{"assignment without a type", "a := 5;"},
    OtherCase{"no type", "a : ;"},
    OtherCase{"unknown type", "a : Integer;"},
    OtherCase{"unknown type", "a : In;"},
    OtherCase{"unknown type, as long as a block", "a : Date_And_Time_Of;"},
    OtherCase{"unknown type, longer than a block", "a : Date_And_Time_Of_The_Day;"},
    OtherCase{"type with other characters", "a : Int(5);"},
    OtherCase{"type with other characters", "a : Int.5;"},
    OtherCase{"quoted type", "a : \"Int\";"},
    OtherCase{"line ending in front of the type", "a :\n Int;"},
    OtherCase{"comment behind the type", "a : Int (* x *);"},
    OtherCase{"line ending behind the type", "a : Int\n;"},
    OtherCase{"struct", "a : Struct b : Int; END_STRUCT;"},
    OtherCase{"struct with lines", "a : STRUCT\n b : Int;\n END_STRUCT;"},
    OtherCase{"array", "a : Array[0..3] of Int;"},
    OtherCase{"array of texts", "a : Array[0..1, 1..2] of String[3] := [4('x')];"},
    OtherCase{"array of structs", "a : Array[0..1] of Struct b : Bool; END_STRUCT;"},
    OtherCase{"count on a type that is no text", "a : Int[5];"},
    OtherCase{"negative length", "t : String[-1];"},
    OtherCase{"length with a sign", "t : String[+5];"},
    OtherCase{"length with something behind", "t : String[20x];"},
    OtherCase{"length with something behind", "t : String[1_0];"},
    OtherCase{"two lengths", "t : String[20 30];"},
    OtherCase{"length beyond 32 bits", "t : String[9999999999];"},
    OtherCase{"length of ten digits", "t : String[0000000005];"},
    OtherCase{"the longest length", "t : String[2147483647];"},
    OtherCase{"length beyond 31 bits", "t : String[2147483648];"},
    OtherCase{"no length", "t : String[];"},
    OtherCase{"no number as length", "t : String[x];"},
    OtherCase{"line ending in front of the length", "t : String[\n5];"},
    OtherCase{"open length", "t : String[20;"},
    OtherCase{"length closed wrongly", "t : String[20);"},
    OtherCase{"two lengths", "t : String[20][30];"},
    OtherCase{"blank between : and =", "a : Int : = 5;"},
    OtherCase{"no = behind the :", "a : Int : 5;"},
    OtherCase{"no : in front of the =", "a : Int = 5;"},
    OtherCase{"value with a blank inside", "a : Int := 1 0;"},
    OtherCase{"value with brackets", "a : Int := 4(0);"},
    OtherCase{"value with a slash", "a : Int := a/b;"},
    OtherCase{"value with a comment", "a : Int := 5 (* five *);"},
    OtherCase{"value with a comment", "a : Int := 5 // five\n;"},
    OtherCase{"value with a line ending", "a : Int := 5\n;"},
    OtherCase{"line ending in front of the value", "a : Int :=\n5;"},
    OtherCase{"keyword as value", "a : Int := STRUCT;"},
    OtherCase{"keyword as value", "a : Int := begin ;"},
    OtherCase{"keyword as value", "a : Int := end_data_block;"},
    OtherCase{"keyword as value", "a : Int := Data_Block\"x\";"},
    OtherCase{"keyword as value", "a : Int := of;"},
    OtherCase{"word behind a quoted value", "a : Char := 'x'y;"},
    OtherCase{"two quoted values", "a : String := 'x''y';"},
    OtherCase{"open quoted value", "a : String := 'x;"},
    OtherCase{"unquoted attribute value", "a { ExternalWritable := False } : Int;"},
    OtherCase{"number as attribute value", "a { A := 5} : Int;"},
    OtherCase{"keyword as attribute value", "a { A := STRUCT} : Int;"},
    OtherCase{"no attribute value", "a { ExternalWritable := } : Int;"},
    OtherCase{"two attribute values", "a { ExternalWritable := 'Fal''se'} : Int;"},
    OtherCase{"double quotes around an attribute value", "a { A := \"False\"} : Int;"},
    OtherCase{"empty attribute block", "a { } : Int;"},
    OtherCase{"empty attribute block", "a {} : Int;"},
    OtherCase{"two attribute blocks", "a { A := 'x'} { B := 'y'} : Int;"},
    OtherCase{"attribute block closed wrongly", "a { A := 'x') : Int;"},
    OtherCase{"attribute block closed wrongly", "a { A := 'x'] : Int;"},
    OtherCase{"attribute block that is not closed", "a { A := 'x' : Int;"},
    OtherCase{"semicolon behind the last attribute", "a { A := 'x'; } : Int;"},
    OtherCase{"comma between attributes", "a { A := 'x', B := 'y'} : Int;"},
    OtherCase{"attribute without a value", "a { A } : Int;"},
    OtherCase{"attribute without a name", "a { := 'x'} : Int;"},
    OtherCase{"attribute name with other characters", "a { A.B := 'x'} : Int;"},
    OtherCase{"attribute name beyond ASCII", "a { \xC3\xA4 := 'x'} : Int;"},
    OtherCase{"blank between : and = of an attribute", "a { A : = 'x'} : Int;"},
    OtherCase{"comment in the attribute block", "a { (* x *) A := 'x'} : Int;"},
    OtherCase{"line ending in the attribute block", "a {\nA := 'x'} : Int;"},
    OtherCase{"line ending behind an attribute", "a { A := 'x'\n} : Int;"},
    OtherCase{"line ending behind the attribute block", "a { A := 'x'}\n : Int;"},
    OtherCase{"open attribute value", "a { A := 'x} : Int;"},
    OtherCase{"no semicolon", "a : Int"},
    OtherCase{"no semicolon", "a : Int := 5"},
    OtherCase{"no semicolon", "t : String[5]"},
    OtherCase{"no semicolon", "t : String := 'x'"},
    OtherCase{"no semicolon in front of the next", "a : Int b : Int;"},
};

} // namespace corvane::workbench::plugins::s7Driver::testing
