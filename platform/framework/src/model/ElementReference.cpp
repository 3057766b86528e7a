#include <corvane/workbench/model/ElementReference.hpp>

#include <corvane/utils/string/Utf.hpp>
#include <corvane/workbench/i18n/Translate.hpp>
#include <corvane/workbench/model/Element.hpp>

#include "model/Internals.hpp"

namespace corvane::workbench::model {

namespace {

constexpr std::string_view kTextContext = "corvane::workbench::model::ElementReference";

} // namespace

std::string_view ElementReferenceData::text() const {
    if (element_ == nullptr)
        return text_;
    const Tree* const tree = element_->tree();
    if (tree == nullptr || textEpoch_ != tree->epoch()) {
        text_ = element_->path();
        textEpoch_ = tree == nullptr ? 0 : tree->epoch();
    }
    return text_;
}

void ElementReferenceData::saveTo(utils::json::encoder::Object& members,
                                  utils::json::encoder::Key key) const {
    members.addStringView(key, text());
}

void ElementReferenceData::release() {
    if (element_ != nullptr)
        Internals::removeReference(*element_, *this);
    if (keeper_ != nullptr)
        keeper_->forget(*this);
    delete this;
}

std::expected<Element*, std::u16string> ElementReference::element() const {
    if (data_ != nullptr && data_->element_ != nullptr)
        return data_->element_;
    return std::unexpected(
        i18n::fill(i18n::translate(kTextContext, "the referenced element “{}” does not exist"),
                   {utils::string::detail::utf8ToUtf16(text())}));
}

void ElementReference::saveTo(utils::json::encoder::Object& members,
                              utils::json::encoder::Key key) const {
    if (data_ == nullptr)
        members.addStringView(key, {});
    else
        data_->saveTo(members, key);
}

bool ElementReference::sameTarget(const ElementReferenceData& a, const ElementReferenceData& b) {
    return a.element_ == b.element_ && (a.element_ != nullptr || a.text_ == b.text_);
}

ImportReference ImportReference::makeInternalReference(std::string_view name) {
    ImportReference reference;
    reference.text_ = escapeName(name);
    return reference;
}

std::string unescapeName(std::string_view escaped) {
    std::string name;
    for (std::size_t i = 0; i != escaped.size(); ++i) {
        const bool sequence = escaped[i] == '~' && i + 1 != escaped.size();
        if (sequence && (escaped[i + 1] == '0' || escaped[i + 1] == '1'))
            name += escaped[++i] == '0' ? '~' : '/';
        else
            name += escaped[i];
    }
    return name;
}

} // namespace corvane::workbench::model
