#pragma once

#include <corvane/workbench/function_ref.hpp>

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The library that reads the command line gives meanings of its own to some texts, wherever they
/// stand: "++" ends a verb, "[a,b]" is two texts, "{}" is none, and "--at=" takes the next word. A
/// user means such a text as it is. So each text is given to the library behind a shield and taken
/// out of it again where it arrives.
namespace corvane::workbench::cli {

/// The words of a command line behind the program's name, with the texts among them (arguments and
/// values of options) shielded. The verb's name and the options stay as they are, and "--", behind
/// which all words are arguments, is taken out. `takesValue` says whether an option takes a value;
/// it is asked with the verb, "" in front of it, and the option's name ("--at").
[[nodiscard]] std::vector<std::string>
shielded(std::span<const char* const> words,
         function_ref<bool(std::string_view verb, std::string_view option)> takesValue);

/// The text behind the shield. A word that has none is returned as it is.
[[nodiscard]] std::string asGiven(std::string_view word);

} // namespace corvane::workbench::cli
