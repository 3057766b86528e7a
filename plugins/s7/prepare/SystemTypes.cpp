#include "prepare/SystemTypes.hpp"

#include <algorithm>
#include <array>

namespace corvane::workbench::plugins::s7Driver::prepare {

namespace {

using Declarations = std::array<std::string_view, 7>;

// S5Time takes two bytes, and no item comes of it.
constexpr Declarations kTimer = {"start : DWord;",    "PT : Time;", "ET : Time;",
                                 "running : Bool;",   "IN : Bool;", "Q : Bool;",
                                 "reserved : S5Time;"};

constexpr std::array<std::string_view, 6> kCounterBits = {"CU : Bool;", "CD : Bool;", "R : Bool;",
                                                          "LD : Bool;", "QU : Bool;", "QD : Bool;"};

template <class... Values>
constexpr auto counterOf(Values... values) {
    std::array<std::string_view, kCounterBits.size() + sizeof...(values)> declarations{};
    std::ranges::copy(kCounterBits, declarations.begin());
    std::ranges::copy(std::array<std::string_view, sizeof...(values)>{values...},
                      declarations.begin() + kCounterBits.size());
    return declarations;
}

constexpr auto kShortCounter = counterOf("PV : SInt;", "CV : SInt;");
constexpr auto kUnsignedShortCounter = counterOf("PV : USInt;", "CV : USInt;");
constexpr auto kCounter = counterOf("PV : Int;", "CV : Int;");
constexpr auto kUnsignedCounter = counterOf("PV : UInt;", "CV : UInt;");
constexpr auto kDoubleCounter = counterOf("reserved : S5Time;", "PV : DInt;", "CV : DInt;");
constexpr auto kUnsignedDoubleCounter =
    counterOf("reserved : S5Time;", "PV : UDInt;", "CV : UDInt;");

constexpr SystemType number(std::string_view name, std::string_view word) {
    return {.name = name, .word = word, .members = {}};
}

constexpr SystemType structure(std::string_view name, std::span<const std::string_view> members) {
    return {.name = name, .word = {}, .members = members, .structured = true};
}

constexpr SystemType area(std::string_view name, std::uint16_t bytes, bool structured) {
    return {.name = name, .word = {}, .bytes = bytes, .members = {}, .structured = structured};
}

constexpr auto kRows = std::to_array<SystemType>({
    structure("iec_timer", kTimer),
    structure("ton_time", kTimer),
    structure("tof_time", kTimer),
    structure("tp_time", kTimer),
    structure("tonr_time", kTimer),
    structure("ton", kTimer),
    structure("tof", kTimer),
    structure("tp", kTimer),
    structure("tonr", kTimer),
    structure("iec_counter", kCounter),
    structure("iec_ucounter", kUnsignedCounter),
    structure("ctu", kCounter),
    structure("ctd", kCounter),
    structure("ctud", kCounter),
    structure("ctu_int", kCounter),
    structure("ctd_int", kCounter),
    structure("ctud_int", kCounter),
    structure("ctu_uint", kUnsignedCounter),
    structure("ctd_uint", kUnsignedCounter),
    structure("ctud_uint", kUnsignedCounter),
    structure("iec_scounter", kShortCounter),
    structure("iec_uscounter", kUnsignedShortCounter),
    structure("iec_dcounter", kDoubleCounter),
    structure("iec_udcounter", kUnsignedDoubleCounter),
    number("hw_*", "UInt"),
    number("ob_*", "UInt"),
    number("db_*", "UInt"),
    number("pip", "UInt"),
    number("port", "UInt"),
    number("rtm", "UInt"),
    number("conn_any", "UInt"),
    number("conn_ouc", "UInt"),
    number("conn_prg", "UInt"),
    number("conn_r_id", "UDInt"),
    number("aom_ident", "UDInt"),
    number("event_*", "UDInt"),
    number("tod", "Time_Of_Day"),
    {.name = "dt", .word = "Date_And_Time", .members = {}, .structured = true},
    number("ltod", "LTime_Of_Day"),
    area("errorstruct", 28, true),
    area("cref", 8, true),
    area("nref", 8, true),
    area("vref", 12, false),
    area("any", 10, false),
    area("pointer", 6, false),
});

// Their layout was never published, or not for standard access.
constexpr auto kOfUnknownSize = std::to_array<std::string_view>({
    "r_trig",
    "f_trig",
    "iec_ltimer",
    "iec_lcounter",
    "iec_ulcounter",
    "variant",
    "timer",
    "counter",
    "block_fb",
    "block_fc",
    "block_db",
    "block_sdb",
});

} // namespace

std::span<const SystemType> systemTypes() { return kRows; }

const SystemType* findSystemType(std::string_view folded) {
    const auto found = std::ranges::find_if(kRows, [&](const SystemType& row) {
        if (!row.name.ends_with('*'))
            return row.name == folded;
        const std::string_view prefix = row.name.substr(0, row.name.size() - 1);
        return folded.size() > prefix.size() && folded.starts_with(prefix);
    });
    return found == kRows.end() ? nullptr : &*found;
}

const SystemType* findQuotedSystemType(std::string_view folded) {
    const SystemType* const row = findSystemType(folded);
    return row != nullptr && row->name == folded ? row : nullptr;
}

bool isOfUnknownSize(std::string_view folded) {
    return std::ranges::find(kOfUnknownSize, folded) != kOfUnknownSize.end();
}

} // namespace corvane::workbench::plugins::s7Driver::prepare
