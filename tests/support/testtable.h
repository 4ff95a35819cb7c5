// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QTest>

/// The table of a data-driven test: its columns first, then a row each.
template <typename... Types>
class TestTable
{
public:
    template <typename... Names>
    explicit TestTable(Names... names)
    {
        (QTest::addColumn<Types>(names), ...);
    }
    void row(const char *name, const Types &...values) const { (QTest::newRow(name) << ... << values); }
};
