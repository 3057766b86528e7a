#include "DbSource.hpp"
#include "Sandbox.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <mutex>
#include <thread>

/// Several programs that change one project at the same time.
namespace corvane::test {

namespace {

constexpr int kPrograms = 8;

/// Does `job(program, turn)` in as many threads as there are programs, each `turns` times.
template <class Job>
void together(int turns, Job job) {
    std::vector<std::thread> programs;
    for (int program = 0; program != kPrograms; ++program)
        programs.emplace_back([=] {
            for (int turn = 0; turn != turns; ++turn)
                job(program, turn);
        });
    for (auto& program : programs)
        program.join();
}

std::string nameOf(int program, int turn) {
    return "n" + std::to_string(program) + "-" + std::to_string(turn);
}

} // namespace

TEST(Concurrency, WhatWasAcknowledgedIsThere) {
    const Sandbox place;
    static_cast<void>(place.printed({"add", "P.json", "/", "PLC", "A"}));
    together(8, [&](int program, int turn) {
        const auto name = nameOf(program, turn);
        EXPECT_EQ(place.printed({"add", "P.json", "/A", "Command", name}), "/A/" + name + "\n");
    });
    const auto tree = place.printed({"show", "P.json"});
    for (int program = 0; program != kPrograms; ++program)
        for (int turn = 0; turn != 8; ++turn)
            EXPECT_NE(tree.find(nameOf(program, turn)), std::string::npos) << program << turn;
    EXPECT_EQ(place.files(), std::vector<std::string>{"P.json"});
}

// Each program works on what it has added itself, so that no change makes another impossible.
TEST(Concurrency, ChangesOfEveryKindTakeTurns) {
    const Sandbox place;
    static_cast<void>(place.printed({"add", "P.json", "/", "PLC", "A"}));
    together(3, [&](int program, int turn) {
        const auto name = nameOf(program, turn);
        const auto file = name + ".db";
        place.write(file, dataBlock("b" + name, "x : Bool;"));
        // The number that the block gets depends on whose turn it is, and so does the warning.
        EXPECT_EQ(place.run({"import", file, "--project", "P.json", "--at", "/A"}).exitCode, 0);
        static_cast<void>(place.printed({"add", "P.json", "/A", "Command", name}));
        static_cast<void>(place.printed({"set", "P.json", "/A/b" + name + "/x", "Writable=true"}));
        static_cast<void>(place.printed({"rename", "P.json", "/A/" + name, "r" + name}));
        static_cast<void>(place.printed({"add", "P.json", "/A", "Command", "gone" + name}));
        static_cast<void>(place.printed({"remove", "P.json", "/A/gone" + name}));
    });
    const auto document = place.printed({"show", "P.json", "--json"});
    for (int program = 0; program != kPrograms; ++program)
        for (int turn = 0; turn != 3; ++turn) {
            const auto name = nameOf(program, turn);
            EXPECT_NE(document.find("\"b" + name + "\""), std::string::npos) << name;
            EXPECT_NE(document.find("\"r" + name + "\""), std::string::npos) << name;
            EXPECT_EQ(document.find("gone" + name), std::string::npos) << name;
        }
}

TEST(Concurrency, OneOfThoseThatCreateAProjectIsTheFirst) {
    const Sandbox place;
    std::mutex mutex;
    std::vector<std::string> acknowledged;
    together(1, [&](int program, int turn) {
        const auto name = nameOf(program, turn);
        const auto result = place.run({"add", "P.json", "/", "PLC", name});
        const std::scoped_lock lock(mutex);
        if (result.exitCode == 0)
            acknowledged.push_back(name);
        else
            EXPECT_EQ(result,
                      failed("P.json was changed by another program and is not overwritten"));
    });
    EXPECT_FALSE(acknowledged.empty());
    const auto tree = place.printed({"show", "P.json"});
    for (const auto& name : acknowledged)
        EXPECT_NE(tree.find(name), std::string::npos) << name;
}

} // namespace corvane::test
