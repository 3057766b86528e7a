#include "workbench/cli/Arguments.hpp"
#include "workbench/cli/output/TextOutput.hpp"
#include "workbench/cli/verbs/Session.hpp"
#include "workbench/cli/verbs/Verbs.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <exception>
#include <functional>
#include <iterator>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace corvane::workbench::cli {

namespace {

constexpr const char* kProjectHelp = "Project file";
constexpr const char* kPathHelp = "Path of an element, such as /Line/Data/speed; in a name, ~0 "
                                  "stands for ~ and ~1 for /";
constexpr const char* kJsonHelp = "Print JSON for programs instead of text";

/// The verb that was named, ready to run.
using Job = std::function<ExitCode(Session&)>;

/// Refuses what the options by themselves cannot: most verbs have nothing of the kind.
void verify(const auto&) {}

void verify(const SetRequest& request) {
    std::vector<std::string_view> labels;
    for (const std::string_view assignment : request.values) {
        const auto label = assignment.substr(0, assignment.find('='));
        const auto refuse = [&](const char* reason) {
            throw CLI::ValidationError("“" + std::string(label) + "” " + reason);
        };
        if (label.size() == assignment.size())
            refuse("is not of the form LABEL=VALUE");
        if (std::ranges::find(labels, label) != labels.end())
            refuse("is given more than once");
        labels.push_back(label);
    }
}

void verify(const ImportRequest& request) {
    if (request.prepare || request.files.size() < 2)
        return;
    std::vector<std::string> others;
    for (const auto& file : std::span(request.files).subspan(1))
        others.push_back(file.string());
    throw CLI::ValidationError(CLI::ExtrasError(others).what());
}

void store(const CLI::results_t& words, std::vector<std::string>& texts) {
    std::ranges::transform(words, std::back_inserter(texts), asGiven);
}

void store(const CLI::results_t& words, std::vector<std::filesystem::path>& files) {
    std::ranges::transform(words, std::back_inserter(files), asGiven);
}

void store(const CLI::results_t& words, auto& text) { text = asGiven(words.front()); }

/// Adds an argument, or an option with a value, whose text reaches `field` as the user gave it;
/// texts, where the field is a vector.
template <class Field>
CLI::Option* addText(CLI::App& app, const std::string& name, Field& field,
                     const std::string& help) {
    auto* const option = app.add_option(
        name,
        [&field](const CLI::results_t& words) {
            store(words, field);
            return true;
        },
        help);
    option->type_name("TEXT");
    if constexpr (!std::is_assignable_v<Field&, std::string>)
        option->expected(CLI::detail::expected_max_vector_size);
    return option;
}

/// The program while its verbs are added to it.
struct Program {
    CLI::App& app;
    std::span<const char* const> words; ///< as the user gave them
    Job job;
};

/// Adds a verb whose options fill a request of its own. A verb that no word names needs no more
/// than its line in the program's help: making all options takes longer than a short verb's job.
template <class Request>
void addVerb(Program& program, const char* name, const char* help,
             const std::function<void(CLI::App&, Request&)>& addOptions) {
    auto* const verb = program.app.add_subcommand(name, help);
    if (std::ranges::find(program.words, std::string_view(name)) == program.words.end())
        return;
    const auto request = std::make_shared<Request>();
    addOptions(*verb, *request);
    verb->callback([request, &job = program.job] {
        verify(*request);
        job = [request](Session& session) { return run(*request, session); };
    });
}

/// By what the elements of a file are known to be those of the project.
CLI::Option* addMatch(CLI::App& verb, core::Match& match) {
    return verb
        .add_option(
            "--match",
            [&match](const CLI::results_t& words) {
                match =
                    asGiven(words.front()) == "name" ? core::Match::path : core::Match::identity;
                return true;
            },
            "What tells that an element of the file is one of the project: its \"address\" (as "
            "without this option) or its \"name\"; by name, elements keep what is theirs "
            "though the file has moved them")
        ->check(CLI::Validator(
            [](const std::string& word) {
                const auto text = asGiven(word);
                return text == "address" || text == "name"
                           ? std::string()
                           : "“" + text + "” is neither \"address\" nor \"name\"";
            },
            "", "match"))
        ->option_text("address|name");
}

/// What may be asked for where files are prepared; `mark` is what an import needs for them.
void addPrepareOptions(CLI::App& verb, PrepareOptions& options, CLI::Option* mark) {
    const std::array added{
        verb.add_flag("--standard-access", options.standardAccess,
                      "Take blocks that do not say which access they have to have standard access"),
        verb.add_flag("--show-hidden", options.showHidden,
                      "Take variables that are hidden from outside as read-only ones, so that "
                      "those behind them have the addresses that they have in the device"),
        addText(verb, "--constant", options.constants,
                "The value of a constant, which the files do not have; as often as needed")
            ->option_text("NAME=VALUE")
            ->allow_extra_args(false),
        addText(verb, "--block", options.blocks,
                "Only the block with this name; as often as needed")
            ->option_text("NAME")
            ->allow_extra_args(false)};
    if (mark != nullptr)
        for (auto* const option : added)
            option->needs(mark);
}

void addImport(Program& program) {
    addVerb<ImportRequest>(
        program, "import",
        "Import a file: into a new element that is only shown, or into a project",
        [](CLI::App& verb, ImportRequest& request) {
            addText(verb, "FILE", request.files,
                    "File to import, such as plant.db; several with --prepare")
                ->required();
            auto* const prepare = verb.add_flag(
                "--prepare", request.prepare, "Prepare the files first, as the verb prepare does");
            addPrepareOptions(verb, request.prepareOptions, prepare);
            auto* const project =
                addText(verb, "--project", request.project,
                        "Import into this project and save it; it is created if it does not exist");
            project->option_text("PROJECT");
            addText(verb, "--at", request.at,
                    "Import into the element with this path; needed only where several "
                    "can import")
                ->option_text("PATH")
                ->needs(project);
            auto* const document = verb.add_flag("--document", request.document,
                                                 "Print the import document and change nothing");
            verb.add_flag("--dry-run", request.dryRun,
                          "Tell what would be added, updated, moved, renamed and removed, and what "
                          "is missing in the file, and save nothing")
                ->needs(project)
                ->excludes(document);
            addMatch(verb, request.options.match)->needs(project)->excludes(document);
            verb.add_flag(
                    "--remove-missing", request.options.removeMissing,
                    "Remove what an import has brought and the file no longer has, in what the "
                    "file declares; --dry-run shows what that would be")
                ->needs(project)
                ->excludes(document);
            verb.add_flag("--verbose", request.verbose,
                          "Tell of each element that changes, and of each value: old -> new")
                ->needs(project)
                ->excludes(document);
            verb.add_flag("--json", request.json, kJsonHelp);
        });
}

void addPrepare(Program& program) {
    addVerb<PrepareRequest>(
        program, "prepare",
        "Make of files that refer to each other, or cannot be imported as they are, one that can",
        [](CLI::App& verb, PrepareRequest& request) {
            addText(verb, "FILE", request.files,
                    "Files to prepare together, such as plant.db and those that it refers to")
                ->required();
            addText(verb, "--output", request.output,
                    "Write to this file instead of standard output")
                ->option_text("FILE");
            addPrepareOptions(verb, request.options, nullptr);
        });
}

void addShow(Program& program) {
    addVerb<ShowRequest>(program, "show", "Print the tree of a project, or of one element",
                         [](CLI::App& verb, ShowRequest& request) {
                             addText(verb, "PROJECT", request.project, kProjectHelp)->required();
                             addText(verb, "PATH", request.path, kPathHelp);
                             verb.add_flag("--json", request.json,
                                           "Print the document as saving would write it");
                         });
}

void addMembers(Program& program) {
    addVerb<MembersRequest>(program, "members",
                            "Print the attributes, events and tasks that an element publishes",
                            [](CLI::App& verb, MembersRequest& request) {
                                addText(verb, "PROJECT", request.project, kProjectHelp)->required();
                                addText(verb, "PATH", request.path, kPathHelp)->required();
                                verb.add_flag("--json", request.json, kJsonHelp);
                            });
}

void addCheck(Program& program) {
    addVerb<CheckRequest>(
        program, "check", "Print every property error of a project; exits with 1 if there are any",
        [](CLI::App& verb, CheckRequest& request) {
            addText(verb, "PROJECT", request.project, kProjectHelp)->required();
            verb.add_flag("--warnings", request.warnings,
                          "Print what is suspicious, too: elements that share memory, and "
                          "blocks that are the same one; warnings alone exit with 0");
            verb.add_flag("--json", request.json, kJsonHelp);
        });
}

/// How many bytes stand in a row of a map.
void addWidth(CLI::App& verb, unsigned& width) {
    verb.add_option(
            "--width",
            [&width](const CLI::results_t& words) {
                width = asGiven(words.front()) == "16" ? 16 : 8;
                return true;
            },
            "Bytes in a row; 8 without this option")
        ->check(CLI::Validator(
            [](const std::string& word) {
                const auto text = asGiven(word);
                return text == "8" || text == "16" ? std::string()
                                                   : "“" + text + "” is neither 8 nor 16";
            },
            "", "width"))
        ->option_text("8|16");
}

void addMap(Program& program) {
    addVerb<MapRequest>(
        program, "map",
        "Draw the memory of a block, such as a data block: an SVG picture, or text on a terminal",
        [](CLI::App& verb, MapRequest& request) {
            addText(verb, "PROJECT", request.project, kProjectHelp)->required();
            addText(verb, "PATH", request.path,
                    "Path of the block, or of an element that lies in it or in another memory")
                ->required();
            verb.add_flag("--text", request.text, "Draw with characters in any case");
            addWidth(verb, request.width);
            addText(verb, "--output", request.output, "Write the picture to this file")
                ->option_text("FILE");
        });
}

void addForm(Program& program) {
    addVerb<FormRequest>(program, "form", "Print the property form of an element",
                         [](CLI::App& verb, FormRequest& request) {
                             addText(verb, "PROJECT", request.project, kProjectHelp)->required();
                             addText(verb, "PATH", request.path, kPathHelp)->required();
                             verb.add_flag("--json", request.json, kJsonHelp);
                         });
}

void addSet(Program& program) {
    addVerb<SetRequest>(
        program, "set", "Set fields of an element, as its form does, and save the project",
        [](CLI::App& verb, SetRequest& request) {
            addText(verb, "PROJECT", request.project, kProjectHelp)->required();
            addText(verb, "PATH", request.path, kPathHelp)->required();
            addText(verb, "LABEL=VALUE", request.values,
                    "The label of a field and its value: a text, decimal digits, a choice "
                    "or a flag as it is stored or shown, the path of an element; all "
                    "fields are set, or none")
                ->required();
        });
}

void addAdd(Program& program) {
    addVerb<AddRequest>(
        program, "add", "Add an element, save the project, and print the element's path",
        [](CLI::App& verb, AddRequest& request) {
            addText(verb, "PROJECT", request.project,
                    "Project file; it is created if it does not exist and PATH is \"/\"")
                ->required();
            addText(verb, "PATH", request.path,
                    "Path of the element to add it to; \"/\" is the project itself")
                ->required();
            addText(verb, "CLASS", request.elementClass,
                    "Name of its class, or its key in documents, such as @Skill.NAME.CLASS")
                ->required();
            addText(verb, "NAME", request.name,
                    "Its name; a number is put behind a name that is taken");
        });
}

void addRename(Program& program) {
    addVerb<RenameRequest>(
        program, "rename", "Rename an element and save the project; references follow it",
        [](CLI::App& verb, RenameRequest& request) {
            addText(verb, "PROJECT", request.project, kProjectHelp)->required();
            addText(verb, "PATH", request.path, kPathHelp)->required();
            addText(verb, "NAME", request.name, "The new name, which no element beside it has")
                ->required();
        });
}

void addRemove(Program& program) {
    addVerb<RemoveRequest>(
        program, "remove",
        "Remove an element and all below it, save the project, and print which elements now refer "
        "to nothing",
        [](CLI::App& verb, RemoveRequest& request) {
            addText(verb, "PROJECT", request.project, kProjectHelp)->required();
            addText(verb, "PATH", request.path, kPathHelp)->required();
        });
}

void addPlugins(Program& program) {
    addVerb<PluginsRequest>(program, "plugins", "Print the skills and element classes loaded",
                            [](CLI::App& verb, PluginsRequest& request) {
                                verb.add_flag("--json", request.json, kJsonHelp);
                            });
}

void addVerbs(Program& program) {
    addImport(program);
    addPrepare(program);
    addShow(program);
    addMembers(program);
    addCheck(program);
    addMap(program);
    addForm(program);
    addSet(program);
    addAdd(program);
    addRename(program);
    addRemove(program);
    addPlugins(program);
}

void report(std::string_view message) { printMessage(programMessage(message)); }

// An error may come out of a plug-in, so it is reported while the plug-ins are loaded.
ExitCode runReporting(const Job& job, Session& session) try {
    const auto code = job(session);
    session.output().flush();
    return code;
} catch (const std::exception& error) {
    report(session.tellingWhatWasSaved(error.what()));
    return kFailed;
} catch (...) { // of a plug-in that throws what is no exception
    report("unknown error");
    return kFailed;
}

// What could not be loaded is told last: where a verb fails, its own text comes first. The verb
// does its job with the others; but who named a plug-in has not got what was asked for.
ExitCode runReporting(const Job& job, const std::vector<std::filesystem::path>& plugins) try {
    Session session(plugins);
    auto code = runReporting(job, session);
    for (const auto& failure : session.plugins().failures()) {
        report("plug-in " + failure.file.string() + " was not loaded: " + failure.reason);
        if (std::ranges::find(plugins, failure.file) != plugins.end())
            code = kFailed;
    }
    return code;
} catch (const std::exception& error) {
    report(error.what());
    return kFailed;
}

// What kind of text an argument is, and which option needs which, is said in words.
void leaveTypesOut(CLI::App& verb) {
    for (auto* const option : verb.get_options())
        if (option->get_option_text().empty())
            option->option_text(" ");
}

/// Whether an option of the program or of a verb takes a value.
bool takesValue(CLI::App& app, std::string_view verb, std::string_view option) {
    const auto isTaker = [&](CLI::App& owner) {
        const auto* const found = owner.get_option_no_throw(std::string(option));
        return found != nullptr && found->get_items_expected_min() > 0;
    };
    return isTaker(app) || std::ranges::any_of(app.get_subcommands({}), [&](CLI::App* entry) {
               return entry->get_name() == verb && isTaker(*entry);
           });
}

/// Tells what is wrong with the command line.
void reportMisuse(const CLI::App& app, const std::string& message) {
    std::string command = app.get_name();
    for (const auto* const verb : app.get_subcommands())
        command += " " + verb->get_name();
    report(message);
    printMessage("Run \"" + command + " --help\" for more information.");
}

/// Reads the command line; the exit code where there is nothing to run.
std::optional<ExitCode> parse(CLI::App& app, const Job& job, std::span<const char* const> words) {
    try {
        auto shieldedWords = shielded(words, [&](std::string_view verb, std::string_view option) {
            return takesValue(app, verb, option);
        });
        std::ranges::reverse(shieldedWords); // the order in which CLI11 takes words from a vector
        app.parse(std::move(shieldedWords));
        if (!job)
            throw CLI::RequiredError("A subcommand");
        return std::nullopt;
    } catch (const CLI::Success& help) {
        app.exit(help);
        return kDone;
    } catch (const CLI::ExtrasError&) {
        auto extras = app.remaining(true);
        std::ranges::transform(extras, extras.begin(), asGiven);
        reportMisuse(app, CLI::ExtrasError(extras).what());
    } catch (const CLI::ParseError& error) {
        reportMisuse(app, error.what());
    }
    return kUsage;
}

/// Runs the verb that the words behind the program's name ask for, and returns the exit code.
ExitCode runCommandLine(std::span<const char* const> words) {
    CLI::App app("Engineering workbench for automation projects", "corvane");
    app.set_version_flag("--version", std::string("corvane ") + CORVANE_VERSION);
    app.require_subcommand(0, 1); // an unknown one is reported better than a missing one
    app.fallthrough();
    app.footer("The exit code is 0 when the job is done, 1 when it failed or check found problems, "
               "and 2 when the command line is wrong.");

    std::vector<std::filesystem::path> plugins;
    addText(app, "--plugin", plugins,
            "Load this plug-in, too; those beside the program and in the folders of "
            "CORVANE_PLUGIN_PATH are always loaded")
        ->option_text("FILE")
        ->allow_extra_args(false); // a file each time, and what follows is the verb's
    Program program{.app = app, .words = words, .job = {}};
    addVerbs(program);
    for (auto* const verb : app.get_subcommands({})) {
        verb->fallthrough();
        leaveTypesOut(*verb);
    }

    if (const auto code = parse(app, program.job, words))
        return *code;
    return runReporting(program.job, plugins);
}

} // namespace

} // namespace corvane::workbench::cli

int main(int argc, char** argv) {
    const std::span<const char* const> words(argv, static_cast<std::size_t>(argc));
    return corvane::workbench::cli::runCommandLine(words.subspan(words.empty() ? 0 : 1));
}
