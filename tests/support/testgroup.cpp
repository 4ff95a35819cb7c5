// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "testgroup.h"

#include <cstdio>
#include <map>
#include <string>

namespace {

struct RegisteredTest
{
    TestGroup::Run run;
    bool onlyInNamespace = false;
};

std::map<std::string, RegisteredTest> &registeredTests()
{
    static std::map<std::string, RegisteredTest> tests;
    return tests;
}

int runTest(const RegisteredTest &test, int argc, char **argv)
{
    if (test.onlyInNamespace && qgetenv("KT_LAB_NAMESPACE") != "inside") {
        std::puts("SKIP: this test belongs into the lab's network namespace, see lab/in-namespace");
        constexpr int skipped = 77;
        return skipped;
    }
    return test.run(argc, argv);
}

} // namespace

TestGroup::TestGroup(const char *className, Run run, bool onlyInNamespace)
{
    registeredTests()[QByteArray(className).toLower().toStdString()] = {std::move(run), onlyInNamespace};
}

int main(int argc, char **argv)
{
    const auto test = registeredTests().find(argc > 1 ? argv[1] : "");
    if (test == registeredTests().end()) {
        if (registeredTests().size() == 1)
            return runTest(registeredTests().begin()->second, argc, argv);
        std::fprintf(stderr, "usage: %s TEST [ARGUMENT ...], where TEST is one of\n", argv[0]);
        for (const auto &entry : registeredTests())
            std::fprintf(stderr, "    %s\n", entry.first.c_str());
        return 2;
    }
    argv[1] = argv[0];
    return runTest(test->second, argc - 1, argv + 1);
}
