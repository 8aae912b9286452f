// Which of a PPD file's filters the scheduler starts for command jobs, and what it offers.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "admin/ppd_records.h"

inline constexpr std::string_view FILTER_NAME = "commandtovelmo";
inline constexpr std::array<std::string_view, 2> OUR_COMMANDS{"ReportLevels", "ReportStatus"};

// Which lines the scheduler takes filters from: *cupsFilter2 hides *cupsFilter.
enum class FilterLines { None, CupsFilter, CupsFilter2 };

FilterLines filter_lines(std::vector<PpdRecord> const& records);

// The record whose filter gets command jobs: the cheapest that takes them, the first of
// equals. A wildcard such as application/* takes them too. Null: there is none.
PpdRecord const* command_filter(std::vector<PpdRecord> const& records);

// Whether the record's filter is commandtovelmo.
bool names_our_filter(PpdRecord const& record);

// The record that lists the commands on offer; the first one counts. Null: there is none.
PpdRecord const* command_list(std::vector<PpdRecord> const& records);

// The line that lists our commands.
std::string our_command_list();

// Whether these are our commands, in any spacing.
bool lists_our_commands(std::string_view value);

// Why the scheduler would not start our filter or not offer its commands; nothing if it does.
std::optional<std::string> attachment_problem(std::vector<PpdRecord> const& records);
