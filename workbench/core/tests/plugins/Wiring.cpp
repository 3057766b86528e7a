#include "Wiring.hpp"

#include "GivenSkill.hpp"

#include <corvane/utils/string/Utf.hpp>
#include <corvane/workbench/config/Context.hpp>
#include <corvane/workbench/model/Element.hpp>
#include <corvane/workbench/skill/ConcreteClass.hpp>
#include <corvane/workbench/ui/PushButton.hpp>
#include <corvane/workbench/ui/ReferenceChooser.hpp>
#include <corvane/workbench/ui/TextField.hpp>

#include <array>
#include <fstream>
#include <iterator>

namespace corvane::workbench::test {

namespace {

namespace decoder = utils::json::decoder;
namespace encoder = utils::json::encoder;
using utils::string::detail::utf8ToUtf16;

/// A class of exceptions that only this module knows.
class NoteError final : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

std::expected<ui::ImportedDocument, ui::ImportFailure>
readDocument(const std::filesystem::path& file) {
    std::ifstream stream(file);
    if (!stream)
        return std::unexpected(
            ui::ImportFailure{.text = u"the wiring cannot read " + utf8ToUtf16(file.string())});
    return ui::ImportedDocument{
        .text = {std::istreambuf_iterator<char>(stream), {}}, .memory = {}, .warnings = {}};
}

} // namespace

void Identified::load(decoder::Object& members, config::Context& context) {
    while (const auto member = members.next()) {
        if (member->name.view() == "id")
            id = member->value.asString();
        else if (!loadMember(member->name, member->value, context))
            config::throwUnknownParameterError(member->name);
    }
}

void Identified::save(encoder::Object& members) const { members.addStringView("id", id); }

std::optional<utils::core::Uuid> Identified::importId() const {
    if (id.empty())
        return std::nullopt;
    return utils::core::Uuid::createVersion5(kWiringUuid, id);
}

bool Identified::loadMember(std::string_view, decoder::Value, config::Context&) { return false; }

class Rack::Binding final : public skill::ElementBinding<Rack> {
public:
    explicit Binding(Rack& rack)
        : ElementBinding(rack),
          import_("import", {.label = u"Import", .description = {}, .help = {}}, ".wiring",
                  readDocument) {}
    void buildForm(ui::Form form) override { form.add(import_); }

private:
    ui::PushButton import_;
};

std::unique_ptr<skill::Binding> Rack::createBinding() { return std::make_unique<Binding>(*this); }

bool Pin::loadMember(std::string_view name, decoder::Value member, config::Context& context) {
    if (name == "value")
        value = utf8ToUtf16(member.asString());
    else if (name == "peer")
        peer = context.reference(member.asString());
    else
        return false;
    return true;
}

void Pin::save(encoder::Object& members) const {
    Identified::save(members);
    members.addWideString("value", value);
    peer.saveTo(members, "peer");
}

void Pin::configureProperties(bindings::PropertyConfigurationContext& context) {
    context.property(*this, value);
    context.property(*this, peer).validatedBy<&Pin::validatePeer>();
}

bindings::Validation Pin::validatePeer() {
    if (peer.empty())
        return {};
    if (const auto element = peer.element(); !element)
        return std::unexpected(element.error());
    return {};
}

void Pin::importMerge(const skill::Element& existing) {
    if (const auto* const pin = existing.as<Pin>())
        peer = pin->peer;
}

class Pin::Binding final : public skill::ElementBinding<Pin> {
public:
    explicit Binding(Pin& pin)
        : ElementBinding(pin),
          value_("value", {.label = u"Value", .description = {}, .help = {}},
                 pin.propertyHandle(bindings::PropertyId(pin.value)),
                 {[&pin] { return pin.value; },
                  [&pin](std::u16string text) { pin.assign(pin.value, std::move(text)); }},
                 {}),
          peer_("peer", {.label = u"Peer", .description = {}, .help = {}},
                pin.propertyHandle(bindings::PropertyId(pin.peer)),
                {[&pin] { return pin.peer; },
                 [&pin](model::ElementReference to) { pin.assign(pin.peer, std::move(to)); }},
                {.scope = [&pin] { return pin.modelElement()->parentElement(); },
                 .accepts = [](const model::Element&) { return true; }}) {}

    void buildForm(ui::Form form) override {
        form.add(value_);
        form.add(peer_);
    }

private:
    ui::TextField value_;
    ui::ReferenceChooser peer_;
};

std::unique_ptr<skill::Binding> Pin::createBinding() { return std::make_unique<Binding>(*this); }

void Note::load(decoder::Object& members, config::Context&) {
    while (const auto member = members.next()) {
        if (member->name.view() == "last")
            return;
        if (member->name.view() != "text")
            config::throwUnknownParameterError(member->name);
        text = member->value.asString();
    }
    if (text == "unreadable")
        throw NoteError("the note cannot be read");
}

void Note::save(encoder::Object& members) const {
    if (text == "unsavable")
        throw std::runtime_error("the note cannot be saved");
    members.addStringView("text", text);
}

namespace {

using skill::ConcreteClass;
using skill::ElementFactory;

constexpr skill::ClassIdentity identity(std::string_view name, std::uint8_t number) {
    return {.name = name,
            .uuid = numberedUuid(number),
            .description = "part of a wiring",
            .displayName = name,
            .shortName = name,
            .classCode = number};
}

constexpr auto kRackIdentity = identity("Rack", 2);
constexpr auto kBoxIdentity = identity("Box", 3);
constexpr auto kPinIdentity = identity("Pin", 4);
constexpr auto kNoteIdentity = identity("Note", 5);

extern const std::array<const skill::Element::Class*, 3> kParts;

constinit const ElementFactory<Rack> kRackFactory;
constinit const ConcreteClass<Rack, kRackIdentity> kRackClass(kRackFactory, kParts);
constinit const ElementFactory<Box> kBoxFactory;
constinit const ConcreteClass<Box, kBoxIdentity> kBoxClass(kBoxFactory, kParts);
constinit const ElementFactory<Pin> kPinFactory;
constinit const ConcreteClass<Pin, kPinIdentity> kPinClass(kPinFactory, {});
constinit const ElementFactory<Note> kNoteFactory;
constinit const ConcreteClass<Note, kNoteIdentity> kNoteClass(kNoteFactory, {});

constinit const std::array<const skill::Element::Class*, 3> kParts{&kBoxClass, &kPinClass,
                                                                   &kNoteClass};
constinit const std::array<const skill::Element::Class*, 4> kClasses{&kRackClass, &kBoxClass,
                                                                     &kPinClass, &kNoteClass};

const GivenSkill kSkill(kWiringName, kWiringUuid, kClasses);

} // namespace

} // namespace corvane::workbench::test
