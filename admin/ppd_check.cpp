// Whether CUPS can read a PPD file at all.
#include "admin/ppd_check.h"

#include <cups/ppd.h>
#include <unistd.h>

#include <algorithm>

#include "admin/memory_file.h"

int unreadable_ppd_line(std::string const& ppd)
{
  MemoryFile const file(ppd);
  // libcups closes the descriptor that it is given.
  int const descriptor = dup(file.descriptor());
  lseek(descriptor, 0, SEEK_SET);
// Of CUPS 2 the reader stays to the end; it is marked as deprecated since 1.6.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
  ppd_file_t* const read = ppdOpenFd(descriptor);
  int line = 0;
  if (!read) ppdLastError(&line);
  ppdClose(read);
#pragma GCC diagnostic pop
  return read ? 0 : std::max(line, 1);
}
