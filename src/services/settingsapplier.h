// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "services/appliedrecord.h"
#include "services/settingssections.h"

#include "device/toolrun.h"

#include <QDateTime>
#include <QMap>
#include <QObject>
#include <QTimer>

#include <functional>
#include <optional>

class JsonModule;
class NetworkController;
class ResolutionContainer;
class ToolQueue;

/// Has the device follow the document, whoever changed it.
///
/// The applier compares the document, section by section, with a record of what was last carried out, and
/// runs the tools of the sections that differ, in a fixed order. A section is recorded when its last tool has
/// ended by itself, whatever its exit code. So a change that a session, a crash or a full disk cut short is
/// carried out later, and a tool that hung runs again when the settings are compared the next time. A device
/// without a record gets one of its document as it is: nothing is carried out then. A record that the system
/// cannot read now is tried again, and never replaced.
class SettingsApplier : public QObject
{
    Q_OBJECT

public:
    using Section = SettingsSections::Section;
    using Sections = SettingsSections::Sections;
    /// A record that cannot be read is tried again this often, with this pause.
    static constexpr int readTries = 20;
    static constexpr int readPauseMs = 250;

    /// All arguments outlive the object. The tools take their turn in `commands`.
    SettingsApplier(JsonModule &configuration, ToolQueue &commands, NetworkController &network,
                    ResolutionContainer &resolutions, QObject *parent = nullptr);

    /// While this is true, sections that would disturb a session wait. Whoever owns the session calls
    /// `follow` at its end.
    void setSessionCheck(const std::function<bool()> &inSession);
    /// At the start of the program: a device without a record is taken as it is, and what was left undone is
    /// carried out.
    void start();
    /// Compares the document in the next turn of the event loop, and carries out these sections even if they
    /// have not changed.
    void apply(Sections forced);
    /// The clock is set to this time, or to the present one when the time is null, the next time that the
    /// time server is forced and switched off.
    void setClock(const QDateTime &time);
    /// Takes sections for carried out: others have seen to them.
    void acknowledge(Sections sections);
    bool isBusy() const;

public slots:
    /// Compares the document with the record in the next turn of the event loop.
    void follow();

signals:
    /// Something is being applied, or no longer.
    void busy(bool busy);
    /// The wired interface has been connected anew as it is configured now, or disconnected.
    void wiredApplied(bool enabled);
    /// The wireless network has been left, to join one anew or for good.
    void wirelessLeft(bool turnedOff);

private:
    /// What a section becomes by the calls that are queued.
    struct UnderWay
    {
        QByteArray fingerprint;
        int runs = 0;
        bool failed = false; ///< a call was given up
    };

    void compare();
    bool isRecordRead();
    void adopt(const QJsonObject &root);
    Sections differing(const QJsonObject &root) const;
    Sections withoutUncheckedMode(const QJsonObject &root, Sections due);
    void checkMode(const QString &mode);
    void carryOut(const QJsonObject &root, Sections due);
    void carryOutNetwork(const QJsonObject &root, Sections due);
    void carryOutWired(bool enabled, Sections due);
    void carryOutWireless(const QJsonObject &wlan, Sections due);
    QVector<ToolCall> calls(const QJsonObject &root, Section section);
    QVector<ToolCall> clockCalls(const QJsonObject &dateTime);
    void add(const QVector<ToolCall> &calls, Sections concerned);
    ToolDone noteFailure(Sections concerned);
    void begin(const QJsonObject &root, Sections sections);
    void finish(Sections sections);
    void saveWhenDone();
    void updateBusy();

    JsonModule &m_configuration;
    ToolQueue &m_commands;
    NetworkController &m_network;
    ResolutionContainer &m_resolutions;
    std::function<bool()> m_inSession;
    QTimer m_turn;
    AppliedRecord m_record;
    int m_readsLeft = readTries; ///< 0 when the record has been read, or given up
    QMap<Section, UnderWay> m_underWay;
    Sections m_forced;
    std::optional<QDateTime> m_clock;
    QString m_modeChecked; ///< the monitor has been asked for this one
    bool m_checkingMode = false;
    bool m_busy = false;
};
