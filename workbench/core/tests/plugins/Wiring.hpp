#pragma once

#include <corvane/workbench/bindings/PropertyConfigurationContext.hpp>
#include <corvane/workbench/model/ElementReference.hpp>
#include <corvane/workbench/skill/Binding.hpp>
#include <corvane/workbench/skill/Element.hpp>

#include <string>

/// The elements of a second skill, which has nothing to do with the one that comes with the
/// program. Their documents name their identities, so that a test can pair what it likes.
namespace corvane::workbench::test {

/// What a rack and a box have in common: an identity, empty where the document states none.
class Identified : public skill::Element {
public:
    std::string id;

    void load(utils::json::decoder::Object& members, config::Context& context) override;
    void save(utils::json::encoder::Object& members) const override;
    [[nodiscard]] std::optional<utils::core::Uuid> importId() const override;

protected:
    /// Reads a member other than "id"; false for one that is unknown.
    virtual bool loadMember(std::string_view name, utils::json::decoder::Value value,
                            config::Context& context);
};

/// Stands at the top. Its form imports ".wiring" files, which hold import documents as they are.
class Rack final : public Identified {
public:
    class Binding;
    std::unique_ptr<skill::Binding> createBinding() override;
};

/// Accepts boxes, pins and notes; an import gives it its new name.
class Box final : public Identified {};

/// Has a value and a peer. An import keeps its name and its peer.
class Pin final : public Identified {
public:
    std::u16string value;
    model::ElementReference peer;

    class Binding;
    void configureProperties(bindings::PropertyConfigurationContext& context) override;
    void save(utils::json::encoder::Object& members) const override;
    std::unique_ptr<skill::Binding> createBinding() override;
    void importMerge(const skill::Element& existing) override;
    [[nodiscard]] bool preserveExistingNameOnImport() const override { return true; }

protected:
    bool loadMember(std::string_view name, utils::json::decoder::Value member,
                    config::Context& context) override;

private:
    bindings::Validation validatePeer();
};

/// Has no identity. The text "unreadable" fails its loading, "unsavable" its saving; a member
/// behind "last" it does not read.
class Note final : public skill::Element {
public:
    std::string text;

    void load(utils::json::decoder::Object& members, config::Context& context) override;
    void save(utils::json::encoder::Object& members) const override;
};

} // namespace corvane::workbench::test
