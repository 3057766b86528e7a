#include "bench/Generators.hpp"

#include <array>
#include <random>
#include <string_view>

namespace corvane::bench {

namespace {

using Random = std::mt19937_64;

std::size_t below(Random& random, std::size_t limit) { return random() % limit; }

template <std::size_t size>
std::string_view oneOf(Random& random, const std::array<std::string_view, size>& choices) {
    return choices[below(random, size)];
}

constexpr std::array<std::string_view, 29> kTypes{
    "Bool",  "Byte",       "SInt", "USInt", "Int",  "UInt",        "DInt",         "UDInt",
    "LInt",  "ULInt",      "Real", "LReal", "Word", "DWord",       "LWord",        "Char",
    "WChar", "String[20]", "Time", "LTime", "Date", "Time_Of_Day", "LTime_Of_Day", "WString[12]",
    "LDT",   "Bool",       "Bool", "Int",   "Real"};
constexpr std::array<std::string_view, 3> kTypesWithoutItems{"S5Time", "Date_And_Time", "DTL"};
constexpr std::array<std::string_view, 4> kAttributes{"", "", "",
                                                      " { ExternalWritable := 'False'}"};
constexpr std::array<std::string_view, 4> kInitialValues{"", "", " := 0", " := 16#1F"};
constexpr std::array<std::string_view, 4> kComments{"", "   // state of the drive", "",
                                                    "   // set by the operator, read by the line"};
constexpr std::array<std::string_view, 6> kNames{"Speed", "Running", "Temperature",
                                                 "Valve", "Counter", "Setpoint"};

class SourceWriter {
public:
    explicit SourceWriter(std::size_t seed) : random_(seed) {}

    void beginBlock(std::size_t number) {
        source_ += "DATA_BLOCK \"Station_" + std::to_string(number) +
                   "\"\n{ S7_Optimized_Access := 'FALSE' }\nVERSION : 0.1\nNON_RETAIN\n"
                   "   STRUCT\n";
    }
    void endBlock() { source_ += "   END_STRUCT;\n\nBEGIN\n   Speed_0 := 1;\nEND_DATA_BLOCK\n\n"; }

    void scalar(std::size_t number) {
        source_ += "      ";
        source_ += oneOf(random_, kNames);
        source_ += "_" + std::to_string(number);
        source_ += oneOf(random_, kAttributes);
        source_ += " : ";
        source_ += oneOf(random_, kTypes);
        source_ += oneOf(random_, kInitialValues);
        source_ += ";";
        source_ += oneOf(random_, kComments);
        source_ += "\n";
    }

    /// A variable that takes its place in memory and becomes no item.
    void withoutItem(std::size_t number) {
        source_ += "      Clock_" + std::to_string(number) + " : ";
        source_ += oneOf(random_, kTypesWithoutItems);
        source_ += ";\n";
    }

    /// A structure of a few scalars; returns how many.
    std::size_t structure(std::size_t number) {
        const std::size_t members = 2 + below(random_, 5);
        source_ += "      Motor_" + std::to_string(number) + " : Struct   (* one drive *)\n";
        for (std::size_t i = 0; i != members; ++i)
            scalar(i);
        source_ += "      END_STRUCT;\n";
        return members;
    }

    /// A short array; returns the number of its elements.
    std::size_t array(std::size_t number) {
        const std::size_t elements = 2 + below(random_, 6);
        source_ += "      Buffer_" + std::to_string(number) + " : Array[0.." +
                   std::to_string(elements - 1) + "] of Int;\n";
        return elements;
    }

    std::size_t mixed(std::size_t number) {
        switch (below(random_, 12)) {
        case 0:
            return structure(number);
        case 1:
            return array(number);
        case 2:
            withoutItem(number);
            return 0;
        default:
            scalar(number);
            return 1;
        }
    }

    [[nodiscard]] std::string take() { return std::move(source_); }

private:
    Random random_;
    std::string source_;
};

} // namespace

std::string mixedSource(std::size_t variables, std::size_t blocks) {
    SourceWriter writer(1);
    for (std::size_t block = 0; block != blocks; ++block) {
        writer.beginBlock(block);
        for (std::size_t i = 0; i < variables / blocks;)
            i += writer.mixed(i);
        writer.endBlock();
    }
    return writer.take();
}

std::string scalarSource(std::size_t variables, std::size_t blocks) {
    SourceWriter writer(2);
    for (std::size_t block = 0; block != blocks; ++block) {
        writer.beginBlock(block);
        for (std::size_t i = 0; i != variables / blocks; ++i)
            writer.scalar(i);
        writer.endBlock();
    }
    return writer.take();
}

std::string arraySource(std::size_t elements) {
    const auto one = std::to_string(elements / 6);
    const auto side = std::to_string(elements / 6 / 100);
    const auto structures = std::to_string(elements / 9);
    return "DATA_BLOCK DB1\n{ S7_Optimized_Access := 'FALSE' }\nSTRUCT\n"
           "  flags : Array[1.." +
           one +
           "] of Bool;\n"
           "  cube : Array[1..10, 0..9, 1.." +
           side +
           "] of Bool;\n"
           "  values : Array[1.." +
           one +
           "] of Real;\n"
           "  field : Array[-5..4, 0..9, 1.." +
           side +
           "] of Real;\n"
           "  drives : Array[1.." +
           structures +
           "] of Struct\n"
           "    running : Bool;\n    speed : Real;\n  END_STRUCT;\n"
           "END_STRUCT;\nBEGIN\nEND_DATA_BLOCK\n";
}

std::vector<std::string> goodAddresses(std::size_t count) {
    static constexpr std::array<std::string_view, 10> kStarts{"DB", "DBX", "DBW", "DBD", "M",
                                                              "MW", "IB",  "QX",  "L",   "T"};
    Random random(3);
    std::vector<std::string> addresses;
    addresses.reserve(count);
    for (std::size_t i = 0; i != count; ++i) {
        std::string address;
        if (below(random, 4) == 0)
            address = "DB" + std::to_string(below(random, 65536)) + ".DBX";
        else
            address = oneOf(random, kStarts);
        address += std::to_string(below(random, 65536));
        if (below(random, 3) == 0)
            address += "." + std::to_string(below(random, 8));
        addresses.push_back(std::move(address));
    }
    return addresses;
}

std::vector<std::string> badAddresses(std::size_t count) {
    static constexpr std::array<std::string_view, 8> kFaults{
        "m10.3", "DB65536.DBB0", "DB12.MW8", "M", "MB65536", "M0x", "M0.8", "M0.1.2"};
    Random random(4);
    std::vector<std::string> addresses;
    addresses.reserve(count);
    for (std::size_t i = 0; i != count; ++i)
        addresses.emplace_back(oneOf(random, kFaults));
    return addresses;
}

} // namespace corvane::bench
