// The listing of a page header that the CUPS library itself wrote to a raster file.
#include <cups/raster.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstring>
#include <string>

#include "diag/raster_header.h"
#include "tests/harness/same_text.h"
#include "tests/harness/stderr_capture.h"

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

TEST(RasterFile, TheHeaderThatTheLibraryReadsIsListed)
{
  cups_page_header_t const header = written_and_read(photo_page());
  StderrCapture messages;
  dump(&header);
  EXPECT_TEXT(messages.take(), R"(=== cups_page_header_t ===
Standard Page Device Dictionary String Values
__MediaClass=PwgRaster        /* MediaClass string */
__MediaColor=white        /* MediaColor string */
__MediaType=photographic-glossy        /* MediaType string */
__OutputType=photo        /* OutputType string */
Standard Page Device Dictionary Integer Values
__AdvanceDistance=0        /* AdvanceDistance value in points */
__AdvanceMedia=CUPS_ADVANCE_PAGE        /* AdvanceMedia value (@link cups_adv_t@) */
__Collate=CUPS_TRUE        /* Collated copies value */
__CutMedia=CUPS_CUT_JOB        /* CutMedia value (@link cups_cut_t@) */
__Duplex=CUPS_FALSE        /* Duplexed (double-sided) value */
__HWResolution=(300,600)        /* Resolution in dots-per-inch */
__ImagingBoundingBox=(0,0)        /* Pixel region that is painted (points, left, bottom, right, top) */
__InsertSheet=CUPS_FALSE        /* InsertSheet value */
__Jog=CUPS_JOG_SET        /* Jog value (@link cups_jog_t@) */
__LeadingEdge=CUPS_EDGE_LEFT        /* LeadingEdge value (@link cups_edge_t@) */
__Margins=(0,0)        /* Lower-lefthand margins in points */
__ManualFeed=CUPS_FALSE        /* ManualFeed value */
__MediaPosition=0        /* MediaPosition value */
__MediaWeight=260        /* MediaWeight value in grams/m^2 */
__MirrorPrint=CUPS_FALSE        /* MirrorPrint value */
__NegativePrint=CUPS_FALSE        /* NegativePrint value */
__NumCopies=2        /* Number of copies to produce */
__Orientation=CUPS_ORIENT_270        /* Orientation value (@link cups_orient_t@) */
__OutputFaceUp=CUPS_FALSE        /* OutputFaceUp value */
__PageSize=(432,576)        /* Width and length of page in points */
__Separations=CUPS_FALSE        /* Separations value */
__TraySwitch=CUPS_FALSE        /* TraySwitch value */
__Tumble=CUPS_FALSE        /* Tumble value */
CUPS Page Device Dictionary Values
__cupsWidth=4        /* Width of page image in pixels */
__cupsHeight=1        /* Height of page image in pixels */
__cupsMediaType=0        /* Media type code */
__cupsBitsPerColor=8        /* Number of bits for each color */
__cupsBitsPerPixel=24        /* Number of bits for each pixel */
__cupsBytesPerLine=12        /* Number of bytes per line */
__cupsColorOrder=CUPS_ORDER_CHUNKED        /* Order of colors */
__cupsColorSpace=CUPS_CSPACE_SRGB        /* True colorspace */
__cupsCompression=0        /* Device compression to use */
__cupsRowCount=0        /* Rows per band */
__cupsRowFeed=0        /* Feed between bands */
__cupsRowStep=0        /* Spacing between lines */
)");
}

}  // namespace
