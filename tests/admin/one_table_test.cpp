#include "admin/one_table.h"

#include <gtest/gtest.h>

#include "admin/status_forms.h"

namespace {

QueueStatus queue(char const* name, Verdict verdict)
{
  QueueStatus status{};
  status.queue.name = name;
  status.verdict = verdict;
  return status;
}

LookError missing(std::string const& name) { return {name + ": there is none", name}; }

std::vector<std::string> names(Statuses const& table)
{
  std::vector<std::string> found;
  for (QueueStatus const& status : table.statuses) found.push_back(shown_name(status));
  return found;
}

std::vector<std::string> errors(Statuses const& table)
{
  std::vector<std::string> found;
  for (LookError const& error : table.errors) found.push_back(error.text);
  return found;
}

using Texts = std::vector<std::string>;

}  // namespace

TEST(OneTable, TheWorstQueueOfAllServersComesFirst)
{
  Statuses const table = one_table({
      {"a", {{queue("hall", Verdict::RibbonLow), queue("photo", Verdict::Ready)}, {}, {}}, {}},
      {"b", {{queue("photo", Verdict::PrinterError), queue("desk", Verdict::Ready)}, {}, {}}, {}},
  });
  EXPECT_EQ(names(table), (Texts{"photo@b", "hall@a", "photo@a", "desk@b"}));
  EXPECT_EQ(errors(table), Texts{});
  EXPECT_EQ(table.away, Texts{});
}

TEST(OneTable, AServerThatCannotBeAskedIsToldAndTheOthersAreThere)
{
  Statuses const table = one_table({
      {"a", {}, "cannot be reached"},
      {"b", {{queue("photo", Verdict::Ready)}, {}, {}}, {}},
      {"c", {}, "does not answer within 3 s"},
  });
  EXPECT_EQ(names(table), Texts{"photo@b"});
  EXPECT_EQ(errors(table), (Texts{"a: cannot be reached", "c: does not answer within 3 s"}));
  EXPECT_EQ(table.away, (Texts{"a", "c"}));
}

TEST(OneTable, AServerThatRefusesIsAwayToo)
{
  Statuses const table = one_table({
      {"a", {{}, {{"the scheduler gave no answer", {}}}, {}}, {}},
      {"b", {{queue("photo", Verdict::Ready)}, {{"hall: it refuses", {}}}, {}}, {}},
      {"c", {{}, {missing("photo")}, {}}, {}},
  });
  EXPECT_EQ(errors(table), (Texts{"a: the scheduler gave no answer", "b: hall: it refuses"}));
  EXPECT_EQ(table.away, Texts{"a"});
}

TEST(OneTable, AQueueThatOneServerHasIsNotMissing)
{
  Statuses const table = one_table({
      {"a", {{}, {missing("photo")}, {}}, {}},
      {"b", {{queue("photo", Verdict::Ready)}, {}, {}}, {}},
  });
  EXPECT_EQ(names(table), Texts{"photo@b"});
  EXPECT_EQ(errors(table), Texts{});
}

TEST(OneTable, AQueueThatNoServerHasIsMissingOnce)
{
  Statuses const table = one_table({
      {"a", {{}, {missing("desk"), missing("hall")}, {}}, {}},
      {"b", {{queue("hall", Verdict::Ready)}, {missing("desk")}, {}}, {}},
  });
  EXPECT_EQ(errors(table), Texts{"desk: there is none"});
}

TEST(OneTable, AServerThatCannotBeAskedHasNoQueueToShow)
{
  Statuses const table = one_table({
      {"a", {{}, {missing("desk")}, {}}, {}},
      {"b", {}, "cannot be reached"},
  });
  EXPECT_EQ(errors(table), (Texts{"desk: there is none", "b: cannot be reached"}));
}

TEST(OneTable, AnotherErrorNamesItsServer)
{
  Statuses const table = one_table({
      {"a", {{}, {{"photo: no permission", {}}}, {}}, {}},
      {"b", {{queue("photo", Verdict::Ready)}, {}, {}}, {}},
  });
  EXPECT_EQ(errors(table), Texts{"a: photo: no permission"});
}
