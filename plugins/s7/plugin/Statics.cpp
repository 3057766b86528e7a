#include "elements/Command.hpp"
#include "elements/DataBlock.hpp"
#include "elements/Item.hpp"
#include "elements/Members.hpp"
#include "elements/Plc.hpp"
#include "elements/Struct.hpp"
#include "plugin/ElementClasses.hpp"
#include "plugin/Skill.hpp"

#include <corvane/workbench/skill/ConcreteClass.hpp>

#include <array>
#include <cstddef>
#include <utility>

// All statics of the plug-in, in the order in which they come up while it loads; they go down in
// the reverse order. Only one file can fix an order, so they stand in one file. The class objects
// and factories are constant-initialised: of them, only the destructors join the queue.

namespace corvane::workbench::plugins::s7Driver {

namespace {

using enum data::TypeCode;
using enum io::Direction;
using model::Access;
using model::Attribute;
using skill::ConcreteClass;
using skill::ElementFactory;
using ElementClass = skill::Element::Class;
using utils::core::Uuid;

constexpr skill::ClassIdentity kPlcIdentity{
    .name = "PLC",
    .uuid = Uuid::fromRawData({0x15, 0x72, 0x83, 0x03, 0x44, 0xfc, 0x46, 0x84, 0x80, 0x46, 0x0d,
                               0x22, 0x96, 0x74, 0x96, 0xf5}),
    .description = "S7 compatible plc",
    .displayName = "S7 Compatible PLC",
    .shortName = "PLC",
    .classCode = 6,
};
constexpr skill::ClassIdentity kDataBlockIdentity{
    .name = "DataBlock",
    .uuid = Uuid::fromRawData({0x2c, 0x8e, 0x6c, 0xa2, 0x51, 0xc2, 0x41, 0x7f, 0x82, 0x45, 0x32,
                               0x12, 0xaf, 0x20, 0xa2, 0x9c}),
    .description = "S7 data block",
    .displayName = "Data Block",
    .shortName = "DB",
    .classCode = 7,
};
constexpr skill::ClassIdentity kStructIdentity{
    .name = "Struct",
    .uuid = Uuid::fromRawData({0xac, 0xf3, 0x37, 0xc0, 0xc2, 0xd1, 0x4a, 0x00, 0x95, 0xf4, 0x8a,
                               0x3c, 0x41, 0x2c, 0xf3, 0x5b}),
    .description = "S7 data structure",
    .displayName = "Structure",
    .shortName = "Struct",
    .classCode = 9,
};
constexpr skill::ClassIdentity kItemIdentity{
    .name = "Item",
    .uuid = Uuid::fromRawData({0x0a, 0xb0, 0x17, 0x2a, 0x3d, 0x1c, 0x45, 0xbf, 0x85, 0x81, 0xf0,
                               0x8e, 0x11, 0x7f, 0x06, 0x3d}),
    .description = "S7 data item",
    .displayName = "Data Item",
    .shortName = "Data",
    .classCode = 2,
};
constexpr skill::ClassIdentity kCommandIdentity{
    .name = "Command",
    .uuid = Uuid::fromRawData({0xa0, 0x3a, 0x23, 0xc1, 0x05, 0x57, 0x4b, 0x69, 0x8b, 0x0d, 0x28,
                               0xc6, 0x6a, 0x10, 0x69, 0x6f}),
    .description = "S7 command",
    .displayName = "Command",
    .shortName = "Command",
    .classCode = 10,
};

// What may stand below what. Nothing stands below an item or a command; a PLC takes structures and
// items directly, too.
extern const std::array<const ElementClass*, 4> kPlcChildren;
extern const std::array<const ElementClass*, 2> kGroupChildren;

/// An attribute for each value type, for one kind of access.
ValueAttributes valueAttributes(Access access) {
    return [access]<std::size_t... row>(std::index_sequence<row...>) {
        return ValueAttributes{Attribute("value", access, kValueTypes[row], {input, output})...};
    }(std::make_index_sequence<kValueTypes.size()>());
}

} // namespace

const Attribute kConnectionTime("connectionTime", Access::readOnly, {timePoint, 0},
                                {input, output});
const Attribute kPlcError("error", Access::readOnly, {errorCode, 0}, {});
const Attribute kReadError("error", Access::readOnly, {errorCode, 0}, {input});
const Attribute kWriteError("writeError", Access::readOnly, {errorCode, 0}, {output});

namespace {

constinit const ElementFactory<Item> kItemFactory;
constinit const ConcreteClass<Item, kItemIdentity> kItemClass(kItemFactory, {});
constinit const ElementFactory<Struct> kStructFactory;
constinit const ConcreteClass<Struct, kStructIdentity> kStructClass(kStructFactory, kGroupChildren);

} // namespace

const process::Event kReadEvent("read", {input});
const process::Event kWrittenEvent("written", {output});
const process::Event kWriteFailedEvent("writeFailed", {output});

const ValueAttributes kReadWriteValues = valueAttributes(Access::readWrite);
const ValueAttributes kReadOnlyValues = valueAttributes(Access::readOnly);

namespace {

constinit const ElementFactory<Command> kCommandFactory;
constinit const ConcreteClass<Command, kCommandIdentity> kCommandClass(kCommandFactory, {});
constinit const ElementFactory<DataBlock> kDataBlockFactory;
constinit const ConcreteClass<DataBlock, kDataBlockIdentity> kDataBlockClass(kDataBlockFactory,
                                                                             kGroupChildren);
constinit const ElementFactory<Plc> kPlcFactory;
constinit const ConcreteClass<Plc, kPlcIdentity> kPlcClass(kPlcFactory, kPlcChildren);

constinit const std::array<const ElementClass*, 4> kPlcChildren{&kDataBlockClass, &kStructClass,
                                                                &kItemClass, &kCommandClass};
constinit const std::array<const ElementClass*, 2> kGroupChildren{&kStructClass, &kItemClass};

const SkillClass kSkillClass;

} // namespace

const process::Task kExecuteTask("execute");

const ElementClass& plcClass() { return kPlcClass; }
const ElementClass& commandClass() { return kCommandClass; }
const ElementClass& dataBlockClass() { return kDataBlockClass; }
const ElementClass& itemClass() { return kItemClass; }
const ElementClass& structClass() { return kStructClass; }

} // namespace corvane::workbench::plugins::s7Driver
