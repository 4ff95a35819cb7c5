// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QtTest>

#include <functional>

/// Lets several test classes share one program. This header is included in every test ahead of its own lines
/// and turns QTEST_MAIN and its sisters into a registration. Where there are several classes, the program's
/// first argument names the one to run, in small letters.
class TestGroup
{
public:
    using Run = std::function<int(int, char **)>;
    /// `className` outlives the program. With `onlyInNamespace` the class is skipped outside of a network
    /// namespace.
    TestGroup(const char *className, Run run, bool onlyInNamespace);
};

/// onlyinnamespace.h redefines it for the class that includes it.
#define KT_TEST_ONLY_IN_NAMESPACE false

#undef QTEST_MAIN
#undef QTEST_GUILESS_MAIN
#undef QTEST_APPLESS_MAIN

#define KT_TEST_IN_GROUP(TestClass, MakeApplication)                                                         \
    static const TestGroup registered##TestClass(                                                            \
        #TestClass,                                                                                          \
        [](int argc, char **argv) {                                                                          \
            MakeApplication;                                                                                 \
            TestClass test;                                                                                  \
            QTEST_SET_MAIN_SOURCE_PATH                                                                       \
            return QTest::qExec(&test, argc, argv);                                                          \
        },                                                                                                   \
        KT_TEST_ONLY_IN_NAMESPACE);
#define QTEST_APPLESS_MAIN(TestClass) KT_TEST_IN_GROUP(TestClass, )
#define QTEST_GUILESS_MAIN(TestClass) KT_TEST_IN_GROUP(TestClass, QCoreApplication application(argc, argv))
#ifdef QT_WIDGETS_LIB
#define QTEST_MAIN(TestClass) KT_TEST_IN_GROUP(TestClass, QApplication application(argc, argv))
#else
#define QTEST_MAIN(TestClass) KT_TEST_IN_GROUP(TestClass, QGuiApplication application(argc, argv))
#endif
