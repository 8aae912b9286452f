// Which job that has ended was a print.
#include "admin/queue_jobs.h"

#include <gtest/gtest.h>

namespace {

constexpr int BEGUN = 1000;

QueuedJob job(bool is_command, bool was_begun)
{
  return {1, IPP_JSTATE_COMPLETED, is_command, was_begun};
}

bool forgotten(ipp_jstate_t state, int level_time)
{
  return was_print(std::nullopt, state, BEGUN, level_time);
}

}  // namespace

TEST(QueueJobs, ACommandJobIsNoPrint)
{
  EXPECT_TRUE(was_print(job(false, true), IPP_JSTATE_COMPLETED, BEGUN, BEGUN + 5));
  EXPECT_FALSE(was_print(job(true, true), IPP_JSTATE_COMPLETED, BEGUN, BEGUN + 5));
}

TEST(QueueJobs, AJobThatWasBegunMayHaveUsedUpAPrintHoweverItEnded)
{
  EXPECT_TRUE(was_print(job(false, true), IPP_JSTATE_CANCELED, BEGUN, 0));
  EXPECT_TRUE(was_print(job(false, true), IPP_JSTATE_ABORTED, BEGUN, 0));
  EXPECT_FALSE(was_print(job(false, false), IPP_JSTATE_CANCELED, BEGUN, 0));
}

TEST(QueueJobs, AForgottenJobIsAPrintUnlessItBroughtLevels)
{
  EXPECT_TRUE(forgotten(IPP_JSTATE_COMPLETED, 0));
  EXPECT_TRUE(forgotten(IPP_JSTATE_COMPLETED, BEGUN - 1));
  EXPECT_TRUE(forgotten(IPP_JSTATE_COMPLETED, BEGUN)) << "the level of the second before it began";
  EXPECT_FALSE(forgotten(IPP_JSTATE_COMPLETED, BEGUN + 1));
  EXPECT_TRUE(was_print(std::nullopt, IPP_JSTATE_COMPLETED, 0, BEGUN)) << "its begin went unseen";
}

TEST(QueueJobs, AJobThatIsForgottenWithItsQueueIsNoPrint)
{
  EXPECT_FALSE(forgotten(IPP_JSTATE_CANCELED, 0));
}

TEST(QueueJobs, AHeldJobKeepsNobodyFromAsking)
{
  for (ipp_jstate_t const state : {IPP_JSTATE_PENDING, IPP_JSTATE_PROCESSING})
    EXPECT_TRUE((QueuedJob{1, state, false, false}.isActive()));
  for (ipp_jstate_t const state : {IPP_JSTATE_HELD, IPP_JSTATE_STOPPED, IPP_JSTATE_COMPLETED})
    EXPECT_FALSE((QueuedJob{1, state, false, false}.isActive()));
}
