#include "dbimport/TreeMemory.hpp"

#include <corvane/utils/memory/LargePages.hpp>
#include <corvane/utils/string/CopyText.hpp>

namespace corvane::workbench::plugins::s7Driver {

std::string_view TreeMemory::keep(std::string_view text) {
    char* const copy = static_cast<char*>(memory_.allocate(text.size(), alignof(char)));
    return {copy, utils::string::copyText(copy, text)};
}

void* TreeMemory::Blocks::do_allocate(std::size_t size, std::size_t alignment) {
    void* const block = std::pmr::new_delete_resource()->allocate(size, alignment);
    utils::memory::preferLargePages(block, size);
    return block;
}

void TreeMemory::Blocks::do_deallocate(void* block, std::size_t size, std::size_t alignment) {
    std::pmr::new_delete_resource()->deallocate(block, size, alignment);
}

} // namespace corvane::workbench::plugins::s7Driver
