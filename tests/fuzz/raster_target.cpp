// Any bytes as a raster page header.
#include <algorithm>
#include <cstdint>
#include <cstring>

#include "diag/raster_header.h"
#include "tests/harness/collected_messages.h"
#include "tests/harness/require.h"
#include "tests/oracle/raster_listing.h"

namespace {

// What a caller has to see to: that the header is complete and its texts end.
cups_page_header_t complete_header(std::uint8_t const* data, std::size_t size)
{
  cups_page_header_t header;
  std::memset(&header, 0, sizeof header);
  std::memcpy(&header, data, std::min(size, sizeof header));
  for (char* text : {header.MediaClass, header.MediaColor, header.MediaType, header.OutputType})
    text[sizeof header.MediaClass - 1] = '\0';
  return header;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
  cups_page_header_t const header = complete_header(data, size);
  collected_messages().clear();
  dump(&header);
  require_equal(collected_messages(), raster_listing(header));
  return 0;
}
