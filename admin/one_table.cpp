// What several servers say, in one table.
#include "admin/one_table.h"

#include <algorithm>
#include <utility>

namespace {

// One that refuses, or breaks off, shows no queue.
bool is_away(ServerStatuses const& server)
{
  auto const is_no_queues = [](LookError const& error) { return error.missing.empty(); };
  return !server.trouble.empty()
         || (server.found.statuses.empty()
             && std::ranges::any_of(server.found.errors, is_no_queues));
}

bool lacks(ServerStatuses const& server, std::string const& queue)
{
  auto const is_it = [&](LookError const& error) { return error.missing == queue; };
  return is_away(server) || std::ranges::any_of(server.found.errors, is_it);
}

void add_error(std::vector<ServerStatuses> const& servers, std::string const& server,
               LookError const& error, Statuses& table)
{
  if (error.missing.empty()) {
    table.errors.push_back({server + ": " + error.text, {}});
    return;
  }
  auto const lacks_it = [&](ServerStatuses const& it) { return lacks(it, error.missing); };
  auto const is_told = [&](LookError const& it) { return it.missing == error.missing; };
  if (std::ranges::all_of(servers, lacks_it) && std::ranges::none_of(table.errors, is_told))
    table.errors.push_back(error);
}

}  // namespace

Statuses one_table(std::vector<ServerStatuses> servers)
{
  Statuses table;
  for (ServerStatuses& server : servers) {
    if (is_away(server)) table.away.push_back(server.server);
    if (!server.trouble.empty())
      table.errors.push_back({server.server + ": " + server.trouble, {}});
    for (LookError const& error : server.found.errors)
      add_error(servers, server.server, error, table);
    for (QueueStatus& status : server.found.statuses) {
      status.server = server.server;
      table.statuses.push_back(std::move(status));
    }
  }
  std::ranges::stable_sort(table.statuses, {}, &QueueStatus::verdict);
  return table;
}
