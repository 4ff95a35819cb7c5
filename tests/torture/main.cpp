// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "operations.h"

#include <QCoreApplication>

#include <cstdio>
#include <unistd.h>

/// kt-torture OPERATION [ARGUMENT ...]: runs one operation on the device root KT_DEVICE_ROOT and prints
/// "done" where the launcher would announce its success, or "refused".
int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    if (argc < 2 || qEnvironmentVariableIsEmpty("KT_DEVICE_ROOT"))
        return 2;
    // The trace of the system calls shows where the operation begins.
    const auto begin = [] {
        [[maybe_unused]] const int missing = ::access("/torture-begins", F_OK);
    };
    const QStringList arguments = QCoreApplication::arguments();
    const bool isDone = Operations::run(arguments.at(1), arguments.mid(2), begin);
    std::puts(isDone ? "done" : "refused");
    std::fflush(stdout);
    // What ends with the process belongs to the next start.
    std::_Exit(0);
}
