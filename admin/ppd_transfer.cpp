// The PPD file of a queue, fetched from the scheduler and given back to it.
#include "admin/ppd_transfer.h"

#include "admin/memory_file.h"

// Asked for by the queue's URI: the page /printers/NAME.ppd refuses some names.
PpdAnswer get_ppd(Scheduler const& scheduler, std::string const& queue)
{
  MemoryFile const file;
  if (!file.exists()) return {{}, false, NO_MEMORY_FILE};
  Answer const answer =
      send(scheduler, make_request(IPP_OP_CUPS_GET_PPD, queue), "/", -1, file.descriptor());
  if (answer.status == IPP_STATUS_ERROR_NOT_FOUND)
    return {
        {}, true, "the queue has no PPD file, so it cannot name a filter; lpadmin -P gives it one"};
  if (answer.status == IPP_STATUS_CUPS_SEE_OTHER)
    return {{}, false, "its PPD file is on another server; name that one with -h"};
  if (!answer.error.empty()) return {{}, false, answer.error};
  // A connection that breaks off leaves half a file behind.
  if (httpError(scheduler.http.get()) != 0)
    return {{}, false, "the scheduler broke off in the PPD file; try again"};
  std::optional<std::string> ppd = file.read();
  if (!ppd) return {{}, false, NO_MEMORY_FILE};
  if (ppd->empty()) return {{}, false, "the scheduler gives an empty PPD file; give it a new one"};
  return {std::move(ppd), false, {}};
}

std::string put_ppd(Scheduler const& scheduler, std::string const& queue, std::string const& ppd)
{
  MemoryFile const file(ppd);
  if (!file.exists()) return NO_MEMORY_FILE;
  return send(scheduler, make_request(IPP_OP_CUPS_ADD_MODIFY_PRINTER, queue), "/admin/",
              file.descriptor())
      .error;
}
