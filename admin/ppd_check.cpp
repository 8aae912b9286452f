// Whether CUPS can read a PPD file at all.
#include "admin/ppd_check.h"

#include <cups/ppd.h>
#include <unistd.h>

#include <algorithm>

#include "admin/memory_file.h"

std::string ppd_fault(std::string const& ppd)
{
  MemoryFile const file(ppd);
  // libcups closes the descriptor that it is given.
  int const descriptor = file.exists() ? dup(file.descriptor()) : -1;
  if (descriptor < 0) return NO_MEMORY_FILE;
  lseek(descriptor, 0, SEEK_SET);
// Of CUPS 2 the reader stays to the end; it is marked as deprecated since 1.6.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
  ppd_file_t* const read = ppdOpenFd(descriptor);
  int line = 0;
  if (!read) ppdLastError(&line);
  ppdClose(read);
#pragma GCC diagnostic pop
  if (read) return {};
  return "CUPS cannot read the PPD file beyond line " + std::to_string(std::max(line, 1))
         + "; cupstestppd says what is wrong there";
}
