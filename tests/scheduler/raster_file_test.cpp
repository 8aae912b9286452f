// The listing of a page header that the CUPS library itself wrote to a raster file.
#include <cups/raster.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstring>

#include "diag/raster_header.h"
#include "tests/harness/same_text.h"
#include "tests/harness/stderr_capture.h"
#include "tests/oracle/raster_listing.h"

namespace {

// A 6x8 inch page at 300 dpi, chunky RGB, one line high so that the file stays small.
cups_page_header2_t photo_page()
{
  cups_page_header2_t page;
  std::memset(&page, 0, sizeof page);
  std::strcpy(page.MediaClass, "PwgRaster");
  std::strcpy(page.MediaColor, "white");
  std::strcpy(page.MediaType, "photographic-glossy");
  std::strcpy(page.OutputType, "photo");
  page.AdvanceMedia = CUPS_ADVANCE_PAGE;
  page.Collate = CUPS_TRUE;
  page.CutMedia = CUPS_CUT_JOB;
  page.HWResolution[0] = 300;
  page.HWResolution[1] = 600;
  page.Jog = CUPS_JOG_SET;
  page.LeadingEdge = CUPS_EDGE_LEFT;
  page.MediaWeight = 260;
  page.NumCopies = 2;
  page.Orientation = CUPS_ORIENT_270;
  page.PageSize[0] = 432;
  page.PageSize[1] = 576;
  page.cupsWidth = 4;
  page.cupsHeight = 1;
  page.cupsBitsPerColor = 8;
  page.cupsBitsPerPixel = 24;
  page.cupsBytesPerLine = 12;
  page.cupsColorOrder = CUPS_ORDER_CHUNKED;
  page.cupsColorSpace = CUPS_CSPACE_SRGB;
  return page;
}

// Writes the page through the library and reads its header back as version 1.
cups_page_header_t written_and_read(cups_page_header2_t page)
{
  int const file = memfd_create("raster", 0);
  cups_raster_t* const writer = cupsRasterOpen(file, CUPS_RASTER_WRITE);
  EXPECT_EQ(cupsRasterWriteHeader2(writer, &page), 1u);
  unsigned char line[12] = {};
  EXPECT_EQ(cupsRasterWritePixels(writer, line, sizeof line), sizeof line);
  cupsRasterClose(writer);

  lseek(file, 0, SEEK_SET);
  cups_raster_t* const reader = cupsRasterOpen(file, CUPS_RASTER_READ);
  cups_page_header_t header;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"  // version 1 is what the listing takes
  EXPECT_EQ(cupsRasterReadHeader(reader, &header), 1u);
#pragma GCC diagnostic pop
  cupsRasterClose(reader);
  close(file);
  return header;
}

// Version 2 of the header begins with the fields of version 1.
cups_page_header_t version_1_of(cups_page_header2_t const& page)
{
  cups_page_header_t header;
  std::memcpy(&header, &page, sizeof header);
  return header;
}

TEST(RasterFile, TheHeaderThatTheLibraryReadsIsListed)
{
  cups_page_header_t const header = written_and_read(photo_page());
  StderrCapture messages;
  dump(&header);
  EXPECT_TEXT(messages.take(), raster_listing(version_1_of(photo_page())));
}

}  // namespace
