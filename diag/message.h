// One message for the scheduler, written whole.
#pragma once

#include <initializer_list>
#include <string_view>

// Joins the pieces and writes them to standard error in one write. A message brings its
// own newline. All programs of a job share the scheduler's status pipe: a line written in
// pieces gets torn and spoils the lines of the others. A failed write is ignored, as there
// is nobody left to tell.
void write_message(std::initializer_list<std::string_view> pieces);
