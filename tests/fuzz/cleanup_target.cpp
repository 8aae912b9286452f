// Any option value in the stale reason cleanup, and queues that have none.
#include <cstdint>

#include "report/stale_reason_cleanup.h"
#include "tests/harness/collected_messages.h"
#include "tests/harness/replaced_calls.h"
#include "tests/harness/require.h"

namespace {

enum class Queue { None, NotTheDefault, WithoutReasons, WithReasons };

Queue queue = Queue::None;
std::string reasons;

std::string expected_removals()
{
  std::string text;
  for (std::size_t at = 0; at < reasons.size();) {
    std::size_t const comma = std::min(reasons.find(',', at), reasons.size());
    if (comma > at) text += "STATE: -" + reasons.substr(at, comma - at) + "\n";
    at = comma + 1;
  }
  return text.empty() ? "STATE: -(null)\n" : text;
}

std::string expected_messages()
{
  std::string text = "clean_printer_state() START\n";
  if (queue == Queue::None || queue == Queue::NotTheDefault)
    text += "DEBUG: Not found default(destination) printer.\n";
  if (queue == Queue::WithReasons) text += expected_removals();
  return text + "clean_printer_state() END\n";
}

int get_dests(cups_dest_t** list)
{
  *list = nullptr;
  if (queue == Queue::None) return 0;
  int const count = cupsAddDest("photo-queue", nullptr, 0, list);
  cups_dest_t& dest = (*list)[0];
  dest.is_default = queue != Queue::NotTheDefault ? 1 : 0;
  dest.num_options = cupsAddOption("printer-type", "4", 0, &dest.options);
  if (queue != Queue::WithoutReasons)
    dest.num_options =
        cupsAddOption("printer-state-reasons", reasons.c_str(), dest.num_options, &dest.options);
  return count;
}

}  // namespace

// The first byte chooses the queue, the rest is the option's value up to the first zero.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
  queue = size == 0 ? Queue::None : static_cast<Queue>(data[0] % 4);
  reasons.assign(data + (size > 0 ? 1 : 0), data + size);
  reasons.resize(reasons.find('\0') < reasons.size() ? reasons.find('\0') : reasons.size());

  replaced_calls.get_dests = get_dests;
  collected_messages().clear();
  clean_printer_state();
  require_equal(collected_messages(), expected_messages());
  return 0;
}
