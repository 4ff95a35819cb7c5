// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "app/program.h"
#include "onlyinnamespace.h"
#include "testdevice.h"

#include <QJsonArray>
#include <QSignalSpy>

class ConnectionDialog;

/// A launcher over a device of its own, whose session client does as it is told. Its program has not been
/// started: the document is read, and no tool has been run.
///
/// The client's runs are told in order: the text of a status file, or "none" (ends without one), "crash",
/// "flood" (prints two megabytes, then 6), "hold" (waits for `letGo`, then 6).
class Launcher
{
public:
    /// One change to the factory document: the keys on the way to a value, and the value.
    struct Setting
    {
        QStringList keys;
        QJsonValue value;
    };

    explicit Launcher(const QList<Setting> &settings = {});

    template <typename Widget>
    Widget *part(const char *name) const
    {
        return window->findChild<Widget *>(QLatin1String(name));
    }

    void click(const char *button) const;
    int page() const;
    void tellClient(const QStringList &outcomes) const;
    void letGo() const;
    /// How often the client was started.
    int runs() const;
    /// The description that the client was given in its nth run, from 1: "server" or another of its objects.
    QJsonObject session(int run, const QString &object) const;
    QStringList addresses() const; ///< those of all runs
    /// Presses Connect and waits for the session's end.
    bool connectAndWait();
    QJsonArray history() const;
    static ConnectionDialog *connectingBox();

    TestDevice device;
    std::unique_ptr<Program> program;
    SettingsApp *window;
    std::unique_ptr<QSignalSpy> ended;
};

/// "server groups" of one group.
QJsonArray oneGroup(const QString &name, const QStringList &members);
inline const QString success = QStringLiteral(R"({"status": 6, "log": []})");
inline const QString failure = QStringLiteral(R"({"status": 1, "log": ["no route", "x:<FAIL>"]})");
inline const QString explained = QStringLiteral(R"({"status": 1, "log": ["no route", ":<FAIL>"]})");
