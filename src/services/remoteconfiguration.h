// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QJsonObject>
#include <QObject>

#include <functional>

class JsonModule;

/// Takes documents from afar: merges them into the held one, checks the result and writes it. The device and
/// the screens follow by the signals.
class RemoteConfiguration : public QObject
{
    Q_OBJECT

public:
    /// What the program is doing.
    struct Guards
    {
        std::function<bool()> updating;  ///< nothing is accepted during a firmware update
        std::function<bool()> inSession; ///< a user works on a remote desktop
    };

    /// `configuration` outlives the object.
    RemoteConfiguration(JsonModule &configuration, const Guards &guards, QObject *parent = nullptr);

    /// Writes a merged document. The sound devices in use stay those of this device. False when it cannot be
    /// written; nothing is changed then. A document without differences changes nothing either.
    bool saveRemoteConfig(const QJsonObject &merged);

public slots:
    /// Merges a document, which may be partial and of an older version. `result` becomes 0 when it is
    /// accepted, and 1, with a line on standard output, when it is not; nothing is changed then.
    void mergeRemoteConfig(const QJsonObject &remote, int *result);

signals:
    /// A merge has changed the document.
    void configurationMerged();
    /// The screens show what the document said before.
    void screensOutdated();
    /// They do, but a user works on a remote desktop: they are brought up to date at the session's end.
    void screensPostponed();

private:
    bool isAcceptable(const QJsonObject &upgraded, const QJsonObject &merged) const;

    JsonModule &m_configuration;
    Guards m_guards;
};
