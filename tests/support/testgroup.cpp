// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "testgroup.h"

#include <cstdio>
#include <map>
#include <string>

namespace {

std::map<std::string, TestGroup::Run> &registeredTests()
{
    static std::map<std::string, TestGroup::Run> tests;
    return tests;
}

}

TestGroup::TestGroup(const char *className, Run run)
{
    registeredTests()[QByteArray(className).toLower().toStdString()] = std::move(run);
}

int main(int argc, char **argv)
{
    if (registeredTests().size() == 1)
        return registeredTests().begin()->second(argc, argv);
    const auto test = registeredTests().find(argc > 1 ? argv[1] : "");
    if (test == registeredTests().end()) {
        std::fprintf(stderr, "usage: %s TEST [ARGUMENT ...], where TEST is one of\n", argv[0]);
        for (const auto &entry : registeredTests())
            std::fprintf(stderr, "    %s\n", entry.first.c_str());
        return 2;
    }
    argv[1] = argv[0];
    return test->second(argc - 1, argv + 1);
}
