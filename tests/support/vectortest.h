// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qglobal.h>

#include <gtest/gtest.h>
#include <hwy/targets.h>

#include <string>
#include <vector>

/// Every test once for each kind of vectors that this processor has.
class VectorTest : public testing::TestWithParam<int64_t>
{
public:
    static std::vector<int64_t> targets()
    {
        std::vector<int64_t> each;
        for (int64_t left = hwy::SupportedTargets(); left != 0; left &= left - 1)
            each.push_back(left & -left);
        return each;
    }
    static std::string name(const testing::TestParamInfo<int64_t> &target) { return hwy::TargetName(target.param); }

protected:
    VectorTest() { hwy::SetSupportedTargetsForTest(GetParam()); }
    ~VectorTest() override { hwy::SetSupportedTargetsForTest(0); }
    Q_DISABLE_COPY_MOVE(VectorTest)
};
