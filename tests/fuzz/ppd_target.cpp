// Any bytes as a PPD file: what attaching puts in, detaching takes out, byte for byte.
#include <cstdint>
#include <string>

#include "admin/command_filter.h"
#include "admin/ppd_attach.h"
#include "tests/harness/require.h"

namespace {

std::size_t bytes_of(PpdRecords const& file)
{
  std::size_t bytes = 0;
  for (PpdRecord const& record : file.records) bytes += record.bytes.size();
  return bytes;
}

void check_change(std::string const& ppd, AttachWishes const& wishes)
{
  PpdChange const change = attach(ppd, wishes);
  if (!change.refusal.empty()) return require(change.ppd.empty(), "a refusal changes nothing");
  require(read_attachment(change.ppd).problem.empty(), "what was attached has no problem");
  require(read_attachment(change.ppd).is_attached, "what was attached is attached");
  require_equal(attach(change.ppd, wishes).ppd, change.ppd);
  require_equal(detach(change.ppd).ppd, detach(ppd).ppd);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
  std::string const ppd(reinterpret_cast<char const*>(data), size);
  require(bytes_of(read_ppd_records(ppd)) == size, "every byte belongs to one record");
  AttachWishes wishes;
  check_change(ppd, wishes);
  wishes.replace = true;
  check_change(ppd, wishes);
  wishes.reason_texts.emplace({ReasonText{"com.velmo-error0001", "T\u00fcr"}});
  check_change(ppd, wishes);
  return 0;
}
