// Reads the profile that Callgrind leaves: which object's code spent how many instructions.
#include "tests/harness/callgrind.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "tests/harness/temporary_file.h"

namespace {

// Objects are named "(1) /path/of/it" the first time and "(1)" from then on.
class ObjectNames {
public:
  std::string resolve(std::string const& text)
  {
    size_t const end = text.find(')');
    if (end + 1 < text.size())
      names_[text.substr(0, end)] = std::filesystem::path(text.substr(end + 2)).filename();
    return names_[text.substr(0, end)];
  }

private:
  std::map<std::string, std::string> names_{};
};

bool is_cost(std::string const& line)
{
  return !line.empty() && std::string("0123456789+-*").find(line[0]) != std::string::npos;
}

// A cost line holds a position and a number. The one after "calls=" repeats what the called
// function spent, which is counted where it was spent.
Instructions read_profile(std::istream& profile)
{
  Instructions spent;
  ObjectNames names;
  std::string object;
  std::string line;
  while (std::getline(profile, line)) {
    if (line.starts_with("ob=")) object = names.resolve(line.substr(3));
    if (line.starts_with("cob=")) names.resolve(line.substr(4));
    if (line.starts_with("calls="))
      std::getline(profile, line);
    else if (is_cost(line))
      spent[object] += std::stod(line.substr(line.find(' ')));
  }
  return spent;
}

}  // namespace

Instructions count_instructions(AnsweredProgram program)
{
  TemporaryFile const profile("");
  program.words.insert(program.words.begin(), {"/usr/bin/valgrind", "-q", "--tool=callgrind",
                                               "--callgrind-out-file=" + profile.path()});
  AnsweredRun const run = run_answered(program);
  if (run.exit_status != 0)
    throw std::runtime_error("a program failed after saying:\n" + run.messages);
  std::ifstream file(profile.path());
  return read_profile(file);
}

double total(Instructions const& instructions)
{
  double sum = 0;
  for (auto const& [object, count] : instructions) sum += count;
  return sum;
}
