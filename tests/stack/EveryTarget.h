#pragma once
/// Runs a test once with each instruction set that this processor has and the kernels are built for.

#include <gtest/gtest.h>
#include <hwy/highway.h>
#include <hwy/targets.h>

#include <string>

class EveryTarget : public testing::TestWithParam<std::int64_t> {
 protected:
  void SetUp() override { UseTargets(GetParam()); }
  void TearDown() override { UseTargets(0); }

 private:
  static void UseTargets(std::int64_t targets) {
    hwy::SetSupportedTargetsForTest(targets);
    hwy::GetChosenTarget().Update(hwy::SupportedTargets());
  }
};

/// `fixture` is derived from EveryTarget.
#define FOR_EVERY_TARGET(fixture)                                                                    \
  INSTANTIATE_TEST_SUITE_P(Targets, fixture, testing::ValuesIn(hwy::SupportedAndGeneratedTargets()), \
                           [](const auto& target) { return std::string(hwy::TargetName(target.param)); })
