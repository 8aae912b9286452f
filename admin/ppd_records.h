// The records of a PPD file, cut as the scheduler's reader cuts them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// One logical line: a keyword with its value, a comment, or anything else that fills a line.
// A quoted value runs on over line ends until its quote is closed.
struct PpdRecord {
  std::string_view bytes;  // as in the file, with the line end
  std::size_t line;        // the number of its first line, from 1
  std::string keyword;     // without the asterisk; empty for what is no keyword line
  std::string option;      // behind the keyword
  std::string text;        // behind the option's slash
  std::string value;       // behind the colon, without its quotes
  bool has_value;          // false: the reader passes over the line
};

struct PpdRecords {
  std::vector<PpdRecord> records;  // all bytes of the file, in order
  std::size_t open_quote;          // the line whose quote is never closed; 0: none
  std::size_t last_line_read;      // the line behind which the reader reads nothing; 0: none
};

// The records point into `ppd`, which has to outlive them.
PpdRecords read_ppd_records(std::string_view ppd);

// Whether the record gives one of the printer's reasons its text: option and text of the record.
bool is_reason_text(PpdRecord const& record);

// Where the line that begins at `from` ends, its line end (CR, LF or both) included.
std::size_t end_of_line(std::string_view ppd, std::size_t from);

// The line that begins at `from`, without its line end.
std::string_view line_at(std::string_view ppd, std::size_t from);

// As the reader compares keywords: ASCII letters without regard to case.
bool same_keyword(std::string_view one, std::string_view other);
