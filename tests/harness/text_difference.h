// Where two texts begin to differ, in a few lines however long they are.
#pragma once

#include <string>
#include <string_view>

// Empty when the texts are the same; otherwise the number of the first line that differs, what
// it is and what it should be. A long line is shown around the first byte that differs.
std::string text_difference(std::string_view is, std::string_view should_be);
