// Why a printer cannot be asked, in the words that people read.
#include "admin/declined.h"

#include <gtest/gtest.h>

namespace {

Queue good_queue()
{
  Queue queue{};
  queue.state = IPP_PSTATE_IDLE;
  queue.accepting = true;
  queue.commands = {"ReportLevels", "ReportStatus"};
  return queue;
}

}  // namespace

TEST(Declined, AnAttachedQueueThatTakesJobsIsNot) { EXPECT_EQ(declined(good_queue()), ""); }

TEST(Declined, EachReasonIsToldWithWhatToDo)
{
  Queue queue = good_queue();
  queue.accepting = false;
  EXPECT_EQ(declined(queue), "rejects jobs; cupsaccept lets it take them");
  queue.reasons = {"hold-new-jobs"};
  EXPECT_EQ(declined(queue), "holds its jobs; cupsenable --release it, then velmoctl ask");
  queue.state = IPP_PSTATE_STOPPED;
  queue.state_message = "out for lunch";
  EXPECT_EQ(declined(queue), "is stopped (out for lunch); cupsenable it, then velmoctl ask");
  queue.commands = {};
  EXPECT_EQ(declined(queue), "is not attached, so nothing asks its printer; see velmoctl attach");
  queue.is_class = true;
  EXPECT_EQ(declined(queue), "is a class; name the queues in it");
}
