// The calls that the linker sends here with --wrap, and the real ones behind them.
#include "tests/harness/replaced_calls.h"

// The names that --wrap asks for are reserved ones; there is no other way to spell them.
// NOLINTBEGIN(clang-diagnostic-reserved-identifier)
extern "C" {

ssize_t __real_writev(int descriptor, iovec const* pieces, int count);
std::size_t __real_fwrite(void const* data, std::size_t size, std::size_t count, FILE* stream);
int __real_fflush(FILE* stream);
unsigned __real_sleep(unsigned seconds);
int __real_usleep(useconds_t microseconds);
char* __real_strdup(char const* text);
unsigned __real_cupsSideChannelDoRequest(cups_sc_command_t command, char* data, int* length,
                                         double timeout);
ssize_t __real_cupsBackChannelRead(char* buffer, std::size_t room, double timeout);
cups_file_t* __real_cupsFileStdin();
char* __real_cupsFileGetConf(cups_file_t* file, char* buffer, std::size_t room, char** value,
                             int* line);
int __real_cupsGetDests(cups_dest_t** list);
cups_dest_t* __real_cupsGetDest(char const* name, char const* instance, int count,
                                cups_dest_t* list);
char const* __real_cupsGetOption(char const* name, int count, cups_option_t* options);
void __real_cupsFreeDests(int count, cups_dest_t* list);

}  // extern "C"

// Constants, so that they stand before anything in the program runs.
constexpr ReplacedCalls REAL_CALLS{
    __real_writev,
    __real_fwrite,
    __real_fflush,
    __real_sleep,
    __real_usleep,
    __real_strdup,
    __real_cupsSideChannelDoRequest,
    __real_cupsBackChannelRead,
    __real_cupsFileStdin,
    __real_cupsFileGetConf,
    __real_cupsGetDests,
    __real_cupsGetDest,
    __real_cupsGetOption,
    __real_cupsFreeDests,
};
constinit ReplacedCalls replaced_calls = REAL_CALLS;

extern "C" {

ssize_t __wrap_writev(int descriptor, iovec const* pieces, int count)
{
  return replaced_calls.writev(descriptor, pieces, count);
}

std::size_t __wrap_fwrite(void const* data, std::size_t size, std::size_t count, FILE* stream)
{
  return replaced_calls.fwrite(data, size, count, stream);
}

int __wrap_fflush(FILE* stream) { return replaced_calls.fflush(stream); }

unsigned __wrap_sleep(unsigned seconds) { return replaced_calls.sleep(seconds); }

int __wrap_usleep(useconds_t microseconds) { return replaced_calls.usleep(microseconds); }

char* __wrap_strdup(char const* text) { return replaced_calls.strdup(text); }

unsigned __wrap_cupsSideChannelDoRequest(cups_sc_command_t command, char* data, int* length,
                                         double timeout)
{
  return replaced_calls.side_channel_request(command, data, length, timeout);
}

ssize_t __wrap_cupsBackChannelRead(char* buffer, std::size_t room, double timeout)
{
  return replaced_calls.back_channel_read(buffer, room, timeout);
}

cups_file_t* __wrap_cupsFileStdin() { return replaced_calls.file_stdin(); }

char* __wrap_cupsFileGetConf(cups_file_t* file, char* buffer, std::size_t room, char** value,
                             int* line)
{
  return replaced_calls.file_get_conf(file, buffer, room, value, line);
}

int __wrap_cupsGetDests(cups_dest_t** list) { return replaced_calls.get_dests(list); }

cups_dest_t* __wrap_cupsGetDest(char const* name, char const* instance, int count,
                                cups_dest_t* list)
{
  return replaced_calls.get_dest(name, instance, count, list);
}

char const* __wrap_cupsGetOption(char const* name, int count, cups_option_t* options)
{
  return replaced_calls.get_option(name, count, options);
}

void __wrap_cupsFreeDests(int count, cups_dest_t* list) { replaced_calls.free_dests(count, list); }

}  // extern "C"
// NOLINTEND(clang-diagnostic-reserved-identifier)
