// A reply of the printer, put together from the "[STS]" lines of the filter's dump.
#pragma once

#include <string>
#include <string_view>

class LoggedReply {
public:
  // Takes a line behind its "[STS] ". Lines that cannot follow one another leave a gap.
  void add(std::string_view line);

  [[nodiscard]] bool isBegun() const { return begun; }
  // All the bytes that the dump says it has are there.
  [[nodiscard]] bool isWhole() const { return begun && !gap && bytes.size() == size; }
  // The bytes up to the first gap.
  [[nodiscard]] std::string const& getBytes() const { return bytes; }

private:
  bool begun = false;
  bool gap = true;  // until the first line tells the size
  std::size_t size = 0;
  std::string bytes;
};

// Whether the line, behind its "[STS] ", is the first of a dump.
bool begins_reply(std::string_view line);
