#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace corvane::workbench::plugins::s7Driver {

/// The translated text that tells a user why the import of a file failed. The blank at its end is
/// part of it and stays: translations are looked up by the whole text.
[[nodiscard]] std::u16string importErrorText(const std::filesystem::path& filePath,
                                             std::string_view message);

} // namespace corvane::workbench::plugins::s7Driver
