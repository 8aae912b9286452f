// Clears whatever printer-state-reasons the scheduler still holds.
#include "report/stale_reason_cleanup.h"

#include <cups/cups.h>

#include <cstdlib>
#include <cstring>

#include "diag/message.h"

namespace {

// Removes each token of a comma-separated list. Blanks beside a comma belong to the token.
void remove_reasons(char const* list)
{
  // A destination need not carry the option; then there is nothing to remove.
  char* const copy = list ? strdup(list) : nullptr;
  if (!copy) return;

  // Kept: the first line is written before any test, so a list without a token gets one.
  char const* token = std::strtok(copy, ",");
  do {
    write_message("STATE: -", token ? token : "(null)", "\n");
  } while (token && (token = std::strtok(nullptr, ",")));
  std::free(copy);
}

}  // namespace

void clean_printer_state()
{
  // Kept: these two lines carry no "DEBUG: " prefix.
  write_message("clean_printer_state() START\n");

  cups_dest_t* dests = nullptr;
  int const count = cupsGetDests(&dests);
  if (cups_dest_t const* const dest = cupsGetDest(nullptr, nullptr, count, dests))
    remove_reasons(cupsGetOption("printer-state-reasons", dest->num_options, dest->options));
  else
    write_message("DEBUG: Not found default(destination) printer.\n");
  cupsFreeDests(count, dests);

  write_message("clean_printer_state() END\n");
}
