#pragma once

#include "elements/DataTypes.hpp"

#include <corvane/workbench/model/Attribute.hpp>
#include <corvane/workbench/process/Event.hpp>
#include <corvane/workbench/process/Task.hpp>

#include <array>

/// The attributes, events and tasks that the plug-in's elements publish: one object each, shared by
/// all elements of a class, constructed while the plug-in loads (plugin/Statics.cpp).
namespace corvane::workbench::plugins::s7Driver {

extern const model::Attribute kConnectionTime;
extern const model::Attribute kPlcError;
extern const model::Attribute kReadError;
extern const model::Attribute kWriteError;

/// The "value" attributes of items: one for each value type, in the order of kValueTypes.
using ValueAttributes = std::array<model::Attribute, kValueTypes.size()>;
extern const ValueAttributes kReadWriteValues;
extern const ValueAttributes kReadOnlyValues;

extern const process::Event kReadEvent;
extern const process::Event kWrittenEvent;
extern const process::Event kWriteFailedEvent;

extern const process::Task kExecuteTask;

} // namespace corvane::workbench::plugins::s7Driver
