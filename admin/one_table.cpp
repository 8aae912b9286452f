// What several servers say, in one table.
#include "admin/one_table.h"

#include <algorithm>
#include <utility>

namespace {

bool lacks(ServerStatuses const& server, std::string const& queue)
{
  auto const is_it = [&](LookError const& error) { return error.missing == queue; };
  return !server.trouble.empty() || std::ranges::any_of(server.found.errors, is_it);
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

void add_away(ServerStatuses const& server, Statuses& table)
{
  table.away.push_back(server.server);
  table.errors.push_back({server.server + ": " + server.trouble, {}});
}

}  // namespace

Statuses one_table(std::vector<ServerStatuses> servers)
{
  Statuses table;
  for (ServerStatuses& server : servers) {
    if (!server.trouble.empty()) add_away(server, table);
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
