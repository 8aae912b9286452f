// Several servers, asked at the same time.
#pragma once

#include <future>
#include <string>
#include <vector>

#include "admin/one_table.h"

// What a thread of its own is asking a server.
struct AskedServer {
  std::string name;
  std::shared_future<std::string> greeting = {};  // why it cannot be asked; empty: it answers
  std::future<Statuses> found = {};               // invalid: it is not being asked
};

// Asks each for these queues, as look() does. One that has not said a word after 3 seconds is told
// as such, and not waited for; it goes on being asked, and its answer counts in the next round.
std::vector<ServerStatuses> ask_servers(std::vector<AskedServer>& servers,
                                        std::vector<std::string> const& queues, int low);
