#include <corvane/workbench/model/ReferenceTable.hpp>

#include <corvane/workbench/model/Element.hpp>
#include <corvane/workbench/model/ReferenceLog.hpp>

#include <utility>
#include <vector>

namespace corvane::workbench::model {

ReferenceTable::~ReferenceTable() {
    for (const auto& entry : waiting_)
        entry.second->table_ = nullptr;
}

ElementReference ReferenceTable::reference(std::string_view text) {
    if (text.empty())
        return {};
    if (last_ == nullptr || last_->text_ != text) {
        const auto found = waiting_.find(text);
        if (found == waiting_.end())
            add(*new ElementReferenceData(std::string(text)));
        else
            last_ = found->second;
    }
    return ElementReference(last_);
}

bool ReferenceTable::resolve(FunctionRef<Element*(std::string_view)> find, ReferenceLog* log) {
    std::vector<std::pair<ElementReferenceData*, Element*>> found;
    for (const auto& [text, data] : waiting_)
        if (Element* const element = find(text))
            found.emplace_back(data, element);
    for (const auto& [data, element] : found) {
        if (log != nullptr)
            log->add(ElementReference(data), *element);
        forget(*data);
        element->addReference(*data);
    }
    return !found.empty();
}

void ReferenceTable::takeOver(ReferenceTable& other) {
    for (const auto& [text, data] : other.waiting_) {
        data->table_ = this;
        waiting_.emplace(text, data);
    }
    other.waiting_.clear();
    other.last_ = nullptr;
}

void ReferenceTable::forget(ElementReferenceData& data) {
    auto [entry, end] = waiting_.equal_range(data.text_);
    while (entry != end && entry->second != &data)
        ++entry;
    waiting_.erase(entry);
    data.table_ = nullptr;
    if (last_ == &data)
        last_ = nullptr;
}

void ReferenceTable::add(ElementReferenceData& data) {
    data.table_ = this;
    waiting_.emplace(data.text_, &data);
    last_ = &data;
}

} // namespace corvane::workbench::model
