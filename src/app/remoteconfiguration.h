// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QJsonObject>
#include <QObject>
#include <QString>

class JsonModule;
class NetworkController;
class ResolutionContainer;
class SettingsApp;
class UpdateModule;

/// Takes documents from afar: merges them into the held one, writes it, and has the device follow it.
///
/// What would disturb the user is not done by the merge. It is kept for `applyRemoteConfig`, which the sender
/// of the document asks for once it has its answer, or, during a session, for the session's end.
class RemoteConfiguration : public QObject
{
    Q_OBJECT

public:
    /// What the object works with. All outlive it.
    struct Parts
    {
        SettingsApp &window;
        JsonModule &configuration;
        ResolutionContainer &resolutions;
        NetworkController &network;
        UpdateModule &update;
    };

    explicit RemoteConfiguration(const Parts &parts, QObject *parent = nullptr);

public slots:
    /// Merges a document, which may be partial and of an older version. `result` becomes 0 when it is
    /// accepted, and 1, with a line on standard output, when it is not; nothing is changed then. Nothing is
    /// accepted while a firmware update runs.
    void mergeRemoteConfig(const QJsonObject &remote, int *result);
    /// Does what the merges have left to be done.
    void applyRemoteConfig();
    /// Does what was merged during the session that has ended.
    void handlePostponeConfiguration();

signals:
    /// The settings and the launcher show what the document said before.
    void pagesOutdated();
    /// A merged document has been written.
    void configurationMerged();
    /// Merged network settings are in force on the device.
    void networkApplied();

private:
    /// What a document asks of the device beyond being written.
    struct Deferred
    {
        bool clientSwitch = false;
        bool networkChange = false;
        bool resolutionChange = false;
        QString resolution;
    };

    bool isAcceptable(const QJsonObject &upgraded, const QJsonObject &merged) const;
    bool saveRemoteConfig(QJsonObject merged);
    void defer(const QJsonObject &stored, QJsonObject &merged);
    void followAtOnce(const QJsonObject &stored, const QJsonObject &merged);
    void showMerged();
    void carryOut(const Deferred &deferred);

    Parts m_parts;
    Deferred m_pending;           ///< for `applyRemoteConfig`
    Deferred m_postponed;         ///< for the end of the session, and as it was after that
    bool m_postponedDone = false; ///< the next merge starts with nothing postponed
};
