// A Markdown table that reads well on a terminal too.
#pragma once

#include <string>
#include <vector>

class Table {
public:
  explicit Table(std::vector<std::string> heads);
  void add(std::vector<std::string> const& cells);
  // The text, its columns filled up with blanks.
  [[nodiscard]] std::string text() const;

private:
  std::vector<std::vector<std::string>> rows_;
};

// A number with so many decimals; thousands are parted by commas.
std::string number(double value, int decimals = 0);
