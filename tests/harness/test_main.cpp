// The main of every test program: a test ends at its first failure, which alone is shown.
#include <gtest/gtest.h>

namespace {

class FirstFailureEndsTheTest : public testing::EmptyTestEventListener {
  void OnTestPartResult(testing::TestPartResult const& result) override
  {
    if (result.failed()) throw testing::AssertionException(result);
  }
};

}  // namespace

int main(int argc, char* argv[])
{
  GTEST_FLAG_SET(brief, true);
  testing::InitGoogleTest(&argc, argv);
  // The list of listeners owns it; as the last one it comes after the failure is printed.
  testing::UnitTest::GetInstance()->listeners().Append(new FirstFailureEndsTheTest);
  return RUN_ALL_TESTS();
}
