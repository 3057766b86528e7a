#pragma once

#include "elements/Command.hpp"
#include "elements/DataBlock.hpp"
#include "elements/Item.hpp"
#include "elements/Plc.hpp"
#include "elements/Struct.hpp"
#include "plugin/ElementClasses.hpp"

#include <corvane/utils/io/StringOutputStream.hpp>
#include <corvane/utils/json/Decoder.hpp>
#include <corvane/utils/string/Utf.hpp>
#include <corvane/workbench/config/Context.hpp>
#include <corvane/workbench/host/Model.hpp>
#include <corvane/workbench/host/Tree.hpp>
#include <corvane/workbench/i18n/Translate.hpp>
#include <corvane/workbench/skill/ElementFactory.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

/// What the tests of elements and forms share.
namespace corvane::workbench::plugins::s7Driver::testing {

inline std::string utf8(std::u16string_view text) {
    return utils::string::detail::utf16ToUtf8(text);
}

/// The class object of T's elements.
template <class T>
[[nodiscard]] const skill::Element::Class& classOf() {
    if constexpr (std::is_same_v<T, Plc>)
        return plcClass();
    else if constexpr (std::is_same_v<T, DataBlock>)
        return dataBlockClass();
    else if constexpr (std::is_same_v<T, Struct>)
        return structClass();
    else if constexpr (std::is_same_v<T, Item>)
        return itemClass();
    else if constexpr (std::is_same_v<T, Command>)
        return commandClass();
}

/// A project tree whose elements come into being as they do in the host. Parents are named by their
/// skill elements; null is the top of the project.
class ElementTree {
public:
    /// An element of a document: made, attached and loaded from the JSON object `members`. `finish`
    /// does the rest for all of them.
    template <class T>
    T& load(skill::Element* parent, std::string_view name, std::string_view members = "{}") {
        T& element = attach<T>(parent, name);
        loadMembers(element, members);
        return element;
    }

    /// The end of a document: references find their elements, every element declares its
    /// properties, and each property is published once.
    void finish() {
        model_.resolveReferences();
        forEachBelow(model_.root(), configure);
        forEachBelow(model_.root(), [](skill::Element& element) { element.publishConfigured(); });
    }

    /// An element that a user adds: made, attached, given its defaults, configured and published.
    template <class T>
    T& add(skill::Element* parent, std::string_view name) {
        T& element = attach<T>(parent, name);
        element.makeDefault();
        configure(element);
        element.publishConfigured();
        return element;
    }

    /// Lets an element read the JSON object `members`.
    void loadMembers(skill::Element& element, std::string_view members) {
        const utils::json::decoder::Document document{std::string(members)};
        auto object = document.root().asObject();
        config::Context context(model_.references());
        element.load(object, context);
    }

    static void configure(skill::Element& element) {
        bindings::PropertyConfigurationContext context;
        context.begin(element);
        element.configureProperties(context);
        context.commit();
    }

    [[nodiscard]] host::Model& model() { return model_; }

private:
    template <class T>
    T& attach(skill::Element* parent, std::string_view name) {
        const auto& elementClass = classOf<T>();
        auto made =
            std::make_unique<model::Element>(elementClass, elementClass.factory().createElement());
        model::Element& above = parent == nullptr ? model_.root() : *parent->modelElement();
        return *host::appendChild(above, std::move(made), name).getSkillElement()->template as<T>();
    }

    static void forEachBelow(model::Element& parent,
                             const std::function<void(skill::Element&)>& action) {
        for (const auto& child : parent.childElements()) {
            action(*child->getSkillElement());
            forEachBelow(*child, action);
        }
    }

    host::Model model_;
};

/// What an element writes into its document, without blanks.
inline std::string saved(const skill::Element& element) {
    utils::io::StringOutputStream stream;
    {
        utils::json::encoder::Document document(stream, utils::json::encoder::Format::compact);
        auto members = document.object();
        element.save(members);
    }
    return stream.take();
}

/// The error text at a field of an element; empty where there is none.
template <class Field>
[[nodiscard]] std::string errorAt(const skill::Element& element, const Field& field) {
    const auto* const error = element.error(bindings::PropertyId(field));
    return error == nullptr ? std::string() : utf8(*error);
}

/// Counts what an element tells the forms that are open.
class Notifications {
public:
    explicit Notifications(bindings::PropertyController& controller)
        : handle_(
              controller.observe([this](bindings::PropertyId property, bindings::Action action) {
                  seen_.emplace_back(property, action);
              })) {}
    Notifications(const Notifications&) = delete;
    Notifications& operator=(const Notifications&) = delete;
    ~Notifications() = default;

    template <class Field>
    [[nodiscard]] std::ptrdiff_t count(const Field& field,
                                       bindings::Action action = bindings::Action::value) const {
        return std::ranges::count(seen_, std::pair(bindings::PropertyId(field), action));
    }
    [[nodiscard]] bool none() const { return seen_.empty(); }

private:
    std::vector<std::pair<bindings::PropertyId, bindings::Action>> seen_;
    std::shared_ptr<void> handle_;
};

/// While it lives, every text is translated to "CONTEXT|TEXT".
class MarkingTranslator {
public:
    MarkingTranslator() {
        i18n::setTranslator([](std::string_view context, std::string_view text) {
            return utils::string::detail::utf8ToUtf16(
                std::string(context).append("|").append(text));
        });
    }
    MarkingTranslator(const MarkingTranslator&) = delete;
    MarkingTranslator& operator=(const MarkingTranslator&) = delete;
    ~MarkingTranslator() { i18n::setTranslator({}); }
};

/// Checks the order in which `walk` visits members, and that it ends at the first one, whichever it
/// is, for which the callback returns true.
template <class Member, class Walk>
void expectVisits(const std::vector<const Member*>& expected, Walk walk) {
    for (std::size_t last = 0; last <= expected.size(); ++last) {
        std::vector<const Member*> visited;
        const bool stopped = walk([&](const Member& member) {
            visited.push_back(&member);
            return visited.size() == last + 1;
        });
        const bool stops = last < expected.size();
        EXPECT_EQ(stopped, stops);
        EXPECT_EQ(visited, std::vector(expected.begin(),
                                       expected.begin() +
                                           static_cast<std::ptrdiff_t>(last + (stops ? 1 : 0))));
    }
}

inline void expectAttributes(const skill::Element& element,
                             const std::vector<const model::Attribute*>& expected) {
    expectVisits(expected, [&](auto visit) { return element.forEachAttribute(visit); });
}

inline void expectEvents(const skill::Element& element,
                         const std::vector<const process::Event*>& expected) {
    expectVisits(expected, [&](auto visit) { return element.forEachEvent(visit); });
}

inline void expectTasks(const skill::Element& element,
                        const std::vector<const process::Task*>& expected) {
    expectVisits(expected, [&](auto visit) { return element.forEachTask(visit); });
}

/// A document that an element must refuse: the error's text without the place, and the member that
/// it names.
struct Refusal {
    std::string_view members;
    std::string_view message;
};

/// Checks that loading fails with exactly that text, in front of the place if it has one.
template <class T>
void expectRefusal(const Refusal& refusal) {
    SCOPED_TRACE(refusal.members);
    ElementTree tree;
    try {
        tree.load<T>(nullptr, "element", refusal.members);
        ADD_FAILURE() << "loaded";
    } catch (const utils::json::decoder::DecodeError& error) {
        const std::string text = error.what();
        EXPECT_EQ(text.substr(0, text.rfind(" (line ")), refusal.message);
    } catch (const config::UnknownParameterError& error) {
        EXPECT_EQ(error.what(), refusal.message);
    }
}

} // namespace corvane::workbench::plugins::s7Driver::testing
