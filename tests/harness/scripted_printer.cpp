// Which feed of the script belongs to which request, query and wait.
#include "tests/harness/scripted_printer.h"

#include <utility>

namespace {

template <typename Item>
Item item_or(std::vector<Item> const& items, size_t index, Item const& otherwise)
{
  return index < items.size() ? items[index] : otherwise;
}

}  // namespace

std::string side_channel_frame(int command, int status, std::string const& data)
{
  std::string frame;
  frame += static_cast<char>(command);
  frame += static_cast<char>(status);
  frame += static_cast<char>(data.size() >> 8);
  frame += static_cast<char>(data.size() & 0xff);
  return frame + data;
}

void ScriptedPrinter::hear_device(std::string const& bytes)
{
  heard_ += bytes;
  waits_of_query_ = 0;
  job_status_asked_ = bytes.ends_with(std::string("\033V10\0\0", 6));
  if (bytes.ends_with("\033V21")) ++queries_;
}

void ScriptedPrinter::hear_request(std::string const& frame)
{
  request_ = frame;
  if (frame[0] == SC_DRAIN_OUTPUT) ++drains_;
}

Feed ScriptedPrinter::side_channel_feed()
{
  if (request_.starts_with(static_cast<char>(SC_GET_BIDI))) return script_.probe;
  return item_or(script_.drains, drains_ - 1, {side_channel_frame(SC_DRAIN_OUTPUT, SC_OK)});
}

Feed ScriptedPrinter::back_channel_feed()
{
  Reply const reply =
      job_status_asked_ ? script_.job_status : item_or(script_.replies, queries_ - 1, {});
  return item_or(reply, waits_of_query_++, silence());
}
