// Which job that has ended was a print.
#include "admin/queue_jobs.h"

#include <gtest/gtest.h>

namespace {

constexpr int BEGUN = 1000;

QueuedJob job(bool is_command, bool was_begun)
{
  return {1, IPP_JSTATE_COMPLETED, is_command, was_begun};
}

JobTraces completed(int begun, int level_time)
{
  return {IPP_JSTATE_COMPLETED, true, begun, level_time};
}

}  // namespace

TEST(QueueJobs, ACommandJobIsNoPrint)
{
  EXPECT_TRUE(was_print(job(false, true)));
  EXPECT_FALSE(was_print(job(true, true)));
}

TEST(QueueJobs, AJobThatWasNotBegunIsNoPrint) { EXPECT_FALSE(was_print(job(false, false))); }

TEST(QueueJobs, AForgottenJobIsAPrintUnlessItBroughtLevels)
{
  EXPECT_TRUE(was_print(completed(BEGUN, 0)));
  EXPECT_TRUE(was_print(completed(BEGUN, BEGUN - 1)));
  EXPECT_TRUE(was_print(completed(BEGUN, BEGUN))) << "the level of the second before it began";
  EXPECT_FALSE(was_print(completed(BEGUN, BEGUN + 1)));
  EXPECT_TRUE(was_print(completed(0, BEGUN))) << "its begin went unseen";
}

TEST(QueueJobs, AForgottenJobThatWasCancelledIsAPrintIfItMayHaveBegun)
{
  EXPECT_TRUE(was_print({IPP_JSTATE_CANCELED, true, BEGUN, BEGUN + 1}));
  EXPECT_FALSE(was_print({IPP_JSTATE_CANCELED, false, BEGUN, 0})) << "it went with its queue";
}

TEST(QueueJobs, AHeldJobKeepsNobodyFromAsking)
{
  for (ipp_jstate_t const state : {IPP_JSTATE_PENDING, IPP_JSTATE_PROCESSING})
    EXPECT_TRUE((QueuedJob{1, state, false, false}.isActive()));
  for (ipp_jstate_t const state : {IPP_JSTATE_HELD, IPP_JSTATE_STOPPED, IPP_JSTATE_COMPLETED})
    EXPECT_FALSE((QueuedJob{1, state, false, false}.isActive()));
}
