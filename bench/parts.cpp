#include "bench/Generators.hpp"

#include "plugins/s7/address/S7Address.hpp"
#include "plugins/s7/dbimport/reader/DbFileReader.hpp"

#include <corvane/utils/core/Uuid.hpp>
#include <corvane/utils/io/MemoryInputStream.hpp>
#include <corvane/utils/json/Decoder.hpp>
#include <corvane/utils/string/Utf.hpp>

#include <benchmark/benchmark.h>

// Single parts, for finding out where a road's time goes.

namespace {

using namespace corvane;
namespace s7 = workbench::plugins::s7Driver;

void readWords(benchmark::State& state) {
    const auto source = bench::scalarSource(10'000, 1);
    for (auto _ : state) {
        utils::io::MemoryInputStream stream(source);
        s7::DbFileReader reader(stream);
        reader.skipByteOrderMark();
        while (!reader.atEnd())
            benchmark::DoNotOptimize(reader.readWord().size());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * source.size()));
}
BENCHMARK(readWords);

void readAddresses(benchmark::State& state) {
    const auto addresses = bench::goodAddresses(10'000);
    for (auto _ : state)
        for (const auto& address : addresses)
            benchmark::DoNotOptimize(s7::readAddress(address));
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * addresses.size()));
}
BENCHMARK(readAddresses);

void nameBasedUuid(benchmark::State& state) {
    const utils::core::Uuid space;
    for (auto _ : state)
        benchmark::DoNotOptimize(utils::core::Uuid::createVersion5(space, "DB51.DB1024.3"));
}
BENCHMARK(nameBasedUuid);

void toUtf16(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(utils::string::detail::utf8ToUtf16("DB51.DB1024.3"));
}
BENCHMARK(toUtf16);

void decodeMembers(benchmark::State& state) {
    std::string text = "[";
    for (int i = 0; i != 10'000; ++i)
        text += R"({"name": "Speed_1", "dataType": "Int", "address": "DB12", "writable": true},)";
    text.back() = ']';
    for (auto _ : state) {
        utils::json::decoder::Document document(text);
        auto array = document.root().asArray();
        while (auto entry = array.next()) {
            auto object = entry->asObject();
            while (auto member = object.next())
                benchmark::DoNotOptimize(member->name.view());
        }
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}
BENCHMARK(decodeMembers);

} // namespace
