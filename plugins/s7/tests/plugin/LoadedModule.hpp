#pragma once

#include <corvane/utils/json/Decoder.hpp>
#include <corvane/workbench/config/Context.hpp>
#include <corvane/workbench/host/ReferenceTable.hpp>
#include <corvane/workbench/skill/ElementFactory.hpp>
#include <corvane/workbench/skill/Skill.hpp>

#include <dlfcn.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// What the tests of the finished module share. They know nothing of it but what a host does.
namespace corvane::workbench::plugins::s7Driver::testing {

/// The registered skill classes of that name.
inline std::vector<const skill::Skill::Class*> skillClasses(std::string_view name) {
    std::vector<const skill::Skill::Class*> found;
    skill::Skill::Class::forEachRegistered([&](const skill::Skill::Class& entry) {
        if (entry.name() == name)
            found.push_back(&entry);
    });
    return found;
}

/// Whether a library is in memory; it is not loaded for the question.
inline bool isInMemory(const char* file) {
    void* const handle = dlopen(file, RTLD_NOW | RTLD_NOLOAD);
    if (handle != nullptr)
        dlclose(handle);
    return handle != nullptr;
}

/// The module, as long as the object lives.
class LoadedModule {
public:
    explicit LoadedModule(const char* file) : handle_(dlopen(file, RTLD_NOW | RTLD_LOCAL)) {
        if (handle_ == nullptr)
            throw std::runtime_error(dlerror());
    }
    LoadedModule(const LoadedModule&) = delete;
    LoadedModule& operator=(const LoadedModule&) = delete;
    ~LoadedModule() { dlclose(handle_); }

    [[nodiscard]] static const skill::Skill::Class& skillClass() {
        return *skillClasses("S7").at(0);
    }

    [[nodiscard]] static const skill::Element::Class& elementClass(std::string_view name) {
        skill::ElementClassRegistrar registrar;
        skillClass().registerElementClasses(registrar);
        for (const auto* const elementClass : registrar.classes())
            if (elementClass->name() == name)
                return *elementClass;
        throw std::runtime_error("no element class " + std::string(name));
    }

    /// An element of that class which has read the JSON object `members`.
    [[nodiscard]] static std::unique_ptr<skill::Element> element(std::string_view className,
                                                                 std::string_view members) {
        auto element = elementClass(className).factory().createElement();
        const utils::json::decoder::Document document{std::string(members)};
        auto object = document.root().asObject();
        host::ReferenceTable references;
        config::Context context(references);
        element->load(object, context);
        return element;
    }

private:
    void* handle_;
};

} // namespace corvane::workbench::plugins::s7Driver::testing
