#include <corvane/workbench/host/ReferenceTable.hpp>

#include <corvane/workbench/host/ReferenceLog.hpp>
#include <corvane/workbench/model/Element.hpp>

#include "model/Internals.hpp"

#include <utility>
#include <vector>

namespace corvane::workbench::host {

using model::Element;
using model::ElementReference;
using model::ElementReferenceData;
using model::Internals;

ReferenceTable::~ReferenceTable() {
    for (const auto& entry : waiting_)
        Internals::keeper(*entry.second) = nullptr;
}

ElementReference ReferenceTable::reference(std::string_view text) {
    if (text.empty())
        return {};
    if (last_ == nullptr || Internals::text(*last_) != text) {
        const auto found = waiting_.find(text);
        if (found == waiting_.end())
            add(Internals::makeData(std::string(text)));
        else
            last_ = found->second;
    }
    return Internals::referTo(last_);
}

bool ReferenceTable::resolve(function_ref<Element*(std::string_view)> find, ReferenceLog* log) {
    std::vector<std::pair<ElementReferenceData*, Element*>> found;
    for (const auto& [text, data] : waiting_)
        if (Element* const element = find(text))
            found.emplace_back(data, element);
    for (const auto& [data, element] : found) {
        if (log != nullptr)
            log->add(Internals::referTo(data), *element);
        forget(*data);
        Internals::addReference(*element, *data);
    }
    return !found.empty();
}

void ReferenceTable::takeOver(ReferenceTable& other) {
    for (const auto& [text, data] : other.waiting_) {
        Internals::keeper(*data) = this;
        waiting_.emplace(text, data);
    }
    other.waiting_.clear();
    other.last_ = nullptr;
}

void ReferenceTable::forget(ElementReferenceData& data) {
    auto [entry, end] = waiting_.equal_range(Internals::text(data));
    while (entry != end && entry->second != &data)
        ++entry;
    waiting_.erase(entry);
    Internals::keeper(data) = nullptr;
    if (last_ == &data)
        last_ = nullptr;
}

void ReferenceTable::add(ElementReferenceData& data) {
    Internals::keeper(data) = this;
    waiting_.emplace(Internals::text(data), &data);
    last_ = &data;
}

} // namespace corvane::workbench::host
