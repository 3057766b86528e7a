#include "dbimport/tree/ElementPath.hpp"

namespace corvane::workbench::plugins::s7Driver {

std::string_view ElementPath::indexedName(std::string_view name) {
    if (indexSuffix_.empty())
        return name;
    name_.assign(name).append(indexSuffix_);
    return name_;
}

std::string_view ElementPath::itemPath(std::string_view name) {
    path_.assign(dottedPath()).append(1, '.').append(name).append(indexSuffix_);
    return path_;
}

void ElementPath::extend(std::string_view name) {
    if (tracked_)
        dottedPath_.append(1, '.').append(name).append(indexSuffix_);
}

ElementPath::Level::Level(ElementPath& path, std::string_view name)
    : path_(&path), size_(path.dottedPath_.size()) {
    path.extend(name);
    path.clearIndexSuffix();
}

} // namespace corvane::workbench::plugins::s7Driver
