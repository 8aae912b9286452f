// Which events are new, and whether some went unseen.
#include "admin/notifications.h"

#include <gtest/gtest.h>

namespace {

std::vector<Event> numbered(std::initializer_list<int> numbers)
{
  std::vector<Event> events;
  for (int const number : numbers) {
    events.emplace_back();
    events.back().number = number;
  }
  return events;
}

// The numbers of what is new, with a ! for a gap.
std::string news(std::initializer_list<int> fetched, int last)
{
  News const found = new_events(numbered(fetched), last);
  std::string text = found.is_gap ? "!" : "";
  for (Event const& event : found.events) text += " " + std::to_string(event.number);
  return text;
}

}  // namespace

TEST(Notifications, TheLastEventIsFetchedOnceMoreAndIsNotNew)
{
  EXPECT_EQ(news({}, 0), "");
  EXPECT_EQ(news({1, 2}, 0), " 1 2");
  EXPECT_EQ(news({2}, 2), "");
  EXPECT_EQ(news({2, 3, 4}, 2), " 3 4");
}

TEST(Notifications, AMissingNumberIsAGap)
{
  EXPECT_EQ(news({4, 5}, 0), "! 4 5") << "the first have been dropped";
  EXPECT_EQ(news({4, 5}, 2), "! 4 5") << "the third has been dropped";
  EXPECT_EQ(news({3, 4}, 2), "! 3 4") << "the second was dropped by a restart";
  EXPECT_EQ(news({}, 2), "!") << "a restart has dropped all";
  EXPECT_EQ(news({2, 4}, 2), "! 4");
}
