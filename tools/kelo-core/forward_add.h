#pragma once

#include "options.h"

#include <iosfwd>

namespace kelo::cli {

// `add` while a running Kelo holds the data file: every line goes to that Kelo, which adds it as
// its Today tab's add field would and saves the file, and the island shows the task at once.
// Each line is answered as `add` answers it, with the task read back from the saved file.
//
// Kelo plans a line at its own clock and calendar, as in its Today tab; a line meant for another
// tab (--bucket upcoming or backlog) is not forwarded. Exit status 1, with one line on standard
// error, when no Kelo can be reached or the tab is not Today.
int forwardAdd(const Invocation& invocation, std::istream& in, std::ostream& out);

} // namespace kelo::cli
