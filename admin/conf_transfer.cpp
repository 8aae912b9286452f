// The scheduler's cupsd.conf, fetched from it.
#include "admin/conf_transfer.h"

#include "admin/memory_file.h"

// Over the scheduler's socket file root and members of lpadmin are let in without a password.
std::optional<std::string> get_conf(Scheduler const& scheduler)
{
  MemoryFile const file;
  NoPasswords const none;
  http_status_t const status = get_file(scheduler, "/admin/conf/cupsd.conf", file.descriptor());
  // A connection that breaks off leaves half a file behind.
  if (status != HTTP_STATUS_OK || httpError(scheduler.http.get()) != 0) return std::nullopt;
  return file.read();
}
