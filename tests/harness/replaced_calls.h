// The filter's calls to libraries, each of which a test may answer in the library's place.
#pragma once

#include <cups/cups.h>
#include <cups/file.h>
#include <cups/sidechannel.h>
#include <sys/types.h>
#include <sys/uio.h>

#include <cstdio>

// Called in the place of the calls of the same names. The answer of the side channel is a
// number, since the library passes on whatever a backend sends; unsigned, as the enumeration is
// that the library declares: s390x hands the two over differently.
struct ReplacedCalls {
  ssize_t (*writev)(int descriptor, iovec const* pieces, int count);
  std::size_t (*fwrite)(void const* data, std::size_t size, std::size_t count, FILE* stream);
  int (*fflush)(FILE* stream);
  unsigned (*sleep)(unsigned seconds);
  int (*usleep)(useconds_t microseconds);
  char* (*strdup)(char const* text);
  unsigned (*side_channel_request)(cups_sc_command_t command, char* data, int* length,
                                   double timeout);
  ssize_t (*back_channel_read)(char* buffer, std::size_t room, double timeout);
  cups_file_t* (*file_stdin)();
  char* (*file_get_conf)(cups_file_t* file, char* buffer, std::size_t room, char** value,
                         int* line);
  int (*get_dests)(cups_dest_t** list);
  cups_dest_t* (*get_dest)(char const* name, char const* instance, int count, cups_dest_t* list);
  char const* (*get_option)(char const* name, int count, cups_option_t* options);
  void (*free_dests)(int count, cups_dest_t* list);
};

extern ReplacedCalls const REAL_CALLS;

// The real ones until a test puts its own in their place.
extern ReplacedCalls replaced_calls;

// While it lives calls may be replaced; at its end they are again what they were before it.
class ReplacementScope {
public:
  ReplacementScope() = default;
  ReplacementScope(ReplacementScope const&) = delete;
  ReplacementScope& operator=(ReplacementScope const&) = delete;
  ~ReplacementScope() { replaced_calls = before_; }

private:
  ReplacedCalls before_ = replaced_calls;
};
