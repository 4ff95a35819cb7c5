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

    /// How long QTRY_VERIFY and its sisters wait, in milliseconds: long, because a busy machine is slow.
    /// KT_TEST_WAIT sets another time, for those who expect tests to fail.
    static int waitMs()
    {
        const int wanted = qEnvironmentVariableIntValue("KT_TEST_WAIT");
        return wanted > 0 ? wanted : 30000;
    }
};

/// onlyinnamespace.h redefines it for the class that includes it.
#define KT_TEST_ONLY_IN_NAMESPACE false

#undef QTRY_VERIFY
#undef QTRY_VERIFY2
#undef QTRY_COMPARE
#undef QTRY_TIMEOUT_DEBUG_IMPL // it would wait twice as long again, to tell that it helps
#define QTRY_VERIFY(expr) QTRY_VERIFY_WITH_TIMEOUT((expr), TestGroup::waitMs())
#define QTRY_VERIFY2(expr, message) QTRY_VERIFY2_WITH_TIMEOUT((expr), (message), TestGroup::waitMs())
#define QTRY_COMPARE(expr, expected) QTRY_COMPARE_WITH_TIMEOUT((expr), expected, TestGroup::waitMs())
#define QTRY_TIMEOUT_DEBUG_IMPL(expr, timeoutValue, step)

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
