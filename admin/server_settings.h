// The settings of a scheduler that can stop a server with many queues.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

// As in cupsd.conf(5), with the values that hold without a line.
struct ServerSettings {
  unsigned long max_jobs = 500;    // that the scheduler remembers, ended ones too; 0: any number
  unsigned long filter_limit = 0;  // cost of all filters that run; 0: any
};

// What these lines of cupsd.conf say, read as libcups reads them; nothing if the system has no room
// for a file in memory.
std::optional<ServerSettings> read_settings(std::string const& conf);

// What would stop a server with so many attached queues, a sentence each.
std::vector<std::string> settings_advice(ServerSettings const& settings, std::size_t queues);
