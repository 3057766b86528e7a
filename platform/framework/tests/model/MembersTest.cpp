#include <corvane/workbench/model/Attribute.hpp>
#include <corvane/workbench/process/Event.hpp>
#include <corvane/workbench/process/Task.hpp>

#include <gtest/gtest.h>

#include <type_traits>

namespace corvane::workbench {
namespace {

using io::Direction;
using model::Access;
using model::Attribute;
using process::Event;
using process::Task;
using Directions = Flags<Direction>;

// The numbers are what the runtime reads.
static_assert(static_cast<int>(Access::readOnly) == 0);
static_assert(static_cast<int>(Access::readWrite) == 2);
static_assert(static_cast<int>(Direction::input) == 1);
static_assert(static_cast<int>(Direction::output) == 2);
static_assert(static_cast<int>(data::TypeCode::boolean) == 0);
static_assert(static_cast<int>(data::TypeCode::signedInteger) == 1);
static_assert(static_cast<int>(data::TypeCode::unsignedInteger) == 2);
static_assert(static_cast<int>(data::TypeCode::floatingPoint) == 3);
static_assert(static_cast<int>(data::TypeCode::text) == 4);
static_assert(static_cast<int>(data::TypeCode::timePoint) == 5);
static_assert(static_cast<int>(data::TypeCode::errorCode) == 9);
static_assert(static_cast<int>(data::TypeCode::generic) == 11);

// They are told apart by their addresses, which a copy would not have.
static_assert(!std::is_copy_constructible_v<Attribute> && !std::is_copy_assignable_v<Attribute>);
static_assert(!std::is_copy_constructible_v<Event> && !std::is_copy_assignable_v<Event>);
static_assert(!std::is_copy_constructible_v<Task> && !std::is_copy_assignable_v<Task>);

TEST(Attribute, IsWhatItWasMadeFrom) {
    const Attribute attribute("level", Access::readWrite, {data::TypeCode::floatingPoint, 64},
                              {Direction::output});
    EXPECT_EQ(attribute.name(), "level");
    EXPECT_EQ(attribute.access(), Access::readWrite);
    EXPECT_EQ(attribute.type(), (data::DataType{data::TypeCode::floatingPoint, 64}));
    EXPECT_EQ(attribute.directions(), Directions{Direction::output});
}

TEST(Attribute, PredefinedOnes) {
    struct Case {
        const Attribute& attribute;
        std::string_view name;
        data::TypeCode code;
        unsigned bits;
        unsigned directions;
    };
    const Case cases[] = {
        {Attribute::kDeviceState, "deviceState", data::TypeCode::unsignedInteger, 8, 3},
        {Attribute::kUpdateTime, "updateTime", data::TypeCode::timePoint, 0, 1},
        {Attribute::kWriteTime, "writeTime", data::TypeCode::timePoint, 0, 2},
        {Attribute::kQuality, "quality", data::TypeCode::unsignedInteger, 8, 1},
        {Attribute::kChangeTime, "changeTime", data::TypeCode::timePoint, 0, 1},
    };
    for (const auto& entry : cases) {
        EXPECT_EQ(entry.attribute.name(), entry.name);
        EXPECT_EQ(entry.attribute.access(), Access::readOnly) << entry.name;
        EXPECT_EQ(entry.attribute.type().code, entry.code) << entry.name;
        EXPECT_EQ(entry.attribute.type().bits, entry.bits) << entry.name;
        EXPECT_EQ(entry.attribute.directions().bits(), entry.directions) << entry.name;
    }
}

TEST(Event, IsWhatItWasMadeFrom) {
    const Event event("jammed", {Direction::input});
    EXPECT_EQ(event.name(), "jammed");
    EXPECT_EQ(event.directions(), Directions{Direction::input});
}

TEST(Event, PredefinedOnes) {
    EXPECT_EQ(Event::kConnected.name(), "connected");
    EXPECT_EQ(Event::kConnected.directions().bits(), 3);
    EXPECT_EQ(Event::kDisconnected.name(), "disconnected");
    EXPECT_EQ(Event::kDisconnected.directions().bits(), 3);
    EXPECT_EQ(Event::kChanged.name(), "changed");
    EXPECT_EQ(Event::kChanged.directions().bits(), 1);
}

TEST(Task, HasAName) {
    EXPECT_EQ(Task("empty").name(), "empty");
    EXPECT_EQ(Task::kReconnect.name(), "reconnect");
}

} // namespace
} // namespace corvane::workbench
