#include "workbench/cli/CommandLine.hpp"

int main(int argc, char** argv) { return corvane::workbench::cli::runCommandLine(argc, argv); }
