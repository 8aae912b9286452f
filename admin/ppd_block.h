// The fenced block that an attached queue's PPD file has at its end.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "admin/ppd_records.h"

inline constexpr std::string_view BLOCK_BEGIN = "*% velmoctl begin";
inline constexpr std::string_view BLOCK_END = "*% velmoctl end";
// Stands in front of each line that the block takes the place of.
inline constexpr std::string_view REPLACED = "*% velmoctl replaced ";
// The last line in front of the block had no line end of its own.
inline constexpr std::string_view NO_LINE_END = "*% velmoctl no line end before";

// Positions in a list of records. The fence is whole: one begin, one end behind it.
struct PpdBlock {
  std::size_t begin;
  std::size_t end;
};

struct FoundBlock {
  std::optional<PpdBlock> block;  // nothing: there is none
  std::string damage;             // why it cannot be told what belongs to the block; names the line
};

FoundBlock find_block(std::vector<PpdRecord> const& records);

// The records outside the block as they were before it was put in, byte for byte.
std::string without_block(std::vector<PpdRecord> const& records, PpdBlock const& block);

// The replaced lines as they stand in the file, without the mark in front.
std::vector<std::string> replaced_lines(std::vector<PpdRecord> const& records);

// The lines of a record, each with the mark of a replaced line in front.
std::string marked_as_replaced(std::string_view record);
