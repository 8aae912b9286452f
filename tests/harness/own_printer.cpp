// How the played printer moves at each call and each wait.
#include "tests/harness/own_printer.h"

#include <array>

#include "tests/harness/faulted_calls.h"

namespace {

constexpr int SIDE_CHANNEL = 4;
constexpr std::string_view ZERO_BYTE{"\0", 1};

// The played printer's own steps do not count.
class Uncounted {
public:
  Uncounted() = default;
  Uncounted(Uncounted const&) = delete;
  Uncounted& operator=(Uncounted const&) = delete;
  ~Uncounted() { go_on_watching(counts_); }

private:
  StepCounts* const counts_ = stop_watching();
};

std::string receive(int descriptor)
{
  std::array<char, 64> packet;
  ssize_t const size = recv(descriptor, packet.data(), packet.size(), MSG_DONTWAIT);
  return {packet.data(), static_cast<std::size_t>(size > 0 ? size : 0)};
}

}  // namespace

OwnPrinter::OwnPrinter(PrinterScript const& script, MemoryFile const& device_file,
                       MemoryFile const& attempts_file)
    : printer_(script), device_(device_file), attempts_(attempts_file)
{
}

std::optional<Outcome> OwnPrinter::meet(Call const& call) const
{
  if (call.kind == Call::Kind::Message) {
    attempts_.append(call.text);
    attempts_.append(ZERO_BYTE);
  }
  auto const failure = outcome_of_fault(call);
  bool const pauses = call.kind == Call::Kind::Sleep || call.kind == Call::Kind::Pause;
  return !failure && pauses ? Outcome{} : failure;
}

std::optional<int> OwnPrinter::begin(Wait wait)
{
  auto const failure = outcome_of_fault(wait);
  if (!failure && wait == Wait::ForAnswer) answer_request();
  if (!failure && wait == Wait::ForReply) send_reply();
  return failure;
}

void OwnPrinter::hear_device()
{
  Uncounted const here;
  std::string const all = device_.text();
  printer_.hear_device(all.substr(heard_));
  heard_ = all.size();
}

// Only the last request counts, a torn one gets no answer, and what the filter has not fetched
// by then comes too late.
void OwnPrinter::answer_request()
{
  Uncounted const here;
  std::string request;
  for (std::string next; !(next = receive(channels_.side_channel.get())).empty();) request = next;
  if (request.empty()) return;
  while (!receive(SIDE_CHANNEL).empty()) continue;
  if (request.size() != 4) return;
  printer_.hear_request(request);
  std::string const answer = printer_.side_channel_feed().bytes;
  send(channels_.side_channel.get(), answer.data(), answer.size(), 0);
}

void OwnPrinter::send_reply()
{
  Uncounted const here;
  std::string const reply = printer_.back_channel_feed().bytes;
  auto const size = static_cast<ssize_t>(reply.size());
  if (write(channels_.back_channel.get(), reply.data(), reply.size()) != size) abort();
}
