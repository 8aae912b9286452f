// Each replaced call in the words of Call and Outcome.
#include "tests/harness/outside_calls.h"

#include <unistd.h>

#include <climits>
#include <string>
#include <utility>

namespace {

// Of this thread: the fuzzer has others, whose calls are its own business.
thread_local OutsideCalls* current = nullptr;

using Kind = Call::Kind;

std::optional<Outcome> met(Call const& call)
{
  return current ? current->meet(call) : std::nullopt;
}

// The result of the call as it is made when nobody has met it.
template <typename Result>
Result noted(Call const& call, Result result)
{
  if (current) current->note(call, {.result = static_cast<long>(result)});
  return result;
}

std::string_view text_of(iovec const& piece)
{
  return {static_cast<char const*>(piece.iov_base), piece.iov_len};
}

std::string_view joined(std::string& message, iovec const* pieces, int count)
{
  if (count == 1) return text_of(pieces[0]);
  message.clear();
  for (int i = 0; i < count; ++i) message += text_of(pieces[i]);
  return message;
}

ssize_t meet_writev(int descriptor, iovec const* pieces, int count)
{
  if (!current || descriptor != STDERR_FILENO) return REAL_CALLS.writev(descriptor, pieces, count);
  Call const call{.kind = Kind::Message, .text = joined(current->message, pieces, count)};
  if (auto const outcome = met(call)) return outcome->result;
  return noted(call, REAL_CALLS.writev(descriptor, pieces, count));
}

std::size_t meet_fwrite(void const* data, std::size_t size, std::size_t count, FILE* stream)
{
  if (stream != stdout) return REAL_CALLS.fwrite(data, size, count, stream);
  Call const call{.kind = Kind::Write,
                  .text = {static_cast<char const*>(data), size * count},
                  .number = static_cast<long>(size)};
  if (auto const outcome = met(call)) return static_cast<std::size_t>(outcome->result);
  return noted(call, REAL_CALLS.fwrite(data, size, count, stream));
}

int meet_fflush(FILE* stream)
{
  if (stream != stdout) return REAL_CALLS.fflush(stream);
  Call const call{.kind = Kind::Flush};
  if (auto const outcome = met(call)) return static_cast<int>(outcome->result);
  return noted(call, REAL_CALLS.fflush(stream));
}

unsigned meet_sleep(unsigned seconds)
{
  Call const call{.kind = Kind::Sleep, .number = static_cast<long>(seconds)};
  if (auto const outcome = met(call)) return static_cast<unsigned>(outcome->result);
  return noted(call, REAL_CALLS.sleep(seconds));
}

int meet_usleep(useconds_t microseconds)
{
  Call const call{.kind = Kind::Pause, .number = static_cast<long>(microseconds)};
  if (auto const outcome = met(call)) return static_cast<int>(outcome->result);
  return noted(call, REAL_CALLS.usleep(microseconds));
}

unsigned meet_request(cups_sc_command_t command, char* data, int* length, double timeout)
{
  Call const call{.kind = Kind::Request, .number = command, .room = *length, .timeout = timeout};
  if (auto const outcome = met(call)) {
    auto const brought = outcome->text.copy(data, static_cast<std::size_t>(*length));
    *length = outcome->length.value_or(static_cast<int>(brought));
    return static_cast<unsigned>(outcome->result);
  }
  unsigned const status = REAL_CALLS.side_channel_request(command, data, length, timeout);
  if (current)
    current->note(call, {.result = static_cast<int>(status),
                         .text = {data, static_cast<std::size_t>(*length)}});
  return status;
}

ssize_t meet_read(char* buffer, std::size_t room, double timeout)
{
  Call const call{.kind = Kind::Read, .room = static_cast<long>(room), .timeout = timeout};
  if (auto const outcome = met(call))
    return outcome->text.empty() ? outcome->result
                                 : static_cast<ssize_t>(outcome->text.copy(buffer, room));
  ssize_t const got = REAL_CALLS.back_channel_read(buffer, room, timeout);
  std::string_view const bytes(buffer, got > 0 ? static_cast<std::size_t>(got) : 0);
  if (current) current->note(call, {.result = got, .text = bytes});
  return got;
}

char* meet_directive(cups_file_t* file, char* buffer, std::size_t room, char** value, int* line)
{
  char* const directive = REAL_CALLS.file_get_conf(file, buffer, room, value, line);
  Outcome const outcome{.result = directive ? *line : 0, .text = directive ? directive : ""};
  if (current) current->note({.kind = Kind::Directive, .room = static_cast<long>(room)}, outcome);
  return directive;
}

cups_file_t* meet_standard_input()
{
  return met({.kind = Kind::StandardInput}) ? nullptr : REAL_CALLS.file_stdin();
}

void take_calls(ReplacedCalls& calls)
{
  calls.writev = meet_writev;
  calls.fwrite = meet_fwrite;
  calls.fflush = meet_fflush;
  calls.sleep = meet_sleep;
  calls.usleep = meet_usleep;
  calls.side_channel_request = meet_request;
  calls.back_channel_read = meet_read;
  calls.file_get_conf = meet_directive;
  calls.file_stdin = meet_standard_input;
}

}  // namespace

OutsideCalls::OutsideCalls(Meet meet_call, Note note_call)
    : meet(std::move(meet_call)), note(std::move(note_call)), outer_(std::exchange(current, this))
{
  message.reserve(PIPE_BUF);
  take_calls(replaced_calls);
}

OutsideCalls::~OutsideCalls() { current = outer_; }
