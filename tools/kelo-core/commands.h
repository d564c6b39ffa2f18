#pragma once

#include "options.h"

#include <iosfwd>

namespace kelo::cli {

// Each command returns the process's exit status.

// Line commands: one JSON value in, one compact JSON line out, until the input ends.
int runParse(const Invocation& invocation, std::istream& in, std::ostream& out);
int runWhen(const Invocation& invocation, std::istream& in, std::ostream& out);
int runPhrase(const Invocation& invocation, std::istream& in, std::ostream& out);
int runFormat(const Invocation& invocation, std::istream& in, std::ostream& out);
int runAdd(const Invocation& invocation, std::istream& in, std::ostream& out);

// Prints the lists of the data file once.
int runLists(const Invocation& invocation, std::ostream& out);

} // namespace kelo::cli
