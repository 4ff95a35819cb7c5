// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "device/quicktool.h"
#include "device/toolrun.h"
#include "models/item.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <optional>
#include <vector>

/// The modes of the connected monitor: reads them from the board's firmware, and sets them.
///
/// A mode is an Item: its display text ("1920x1080 60Hz"), its code, and its group ("DMT" or "CEA"). The
/// first of the list is "Automatic", which leaves the choice to the device. A stored resolution is a display
/// text, or a size alone ("1920x1080"), which means the first mode of that size.
class ResolutionContainer : public QObject
{
    Q_OBJECT

public:
    using ModesDone = std::function<void(const std::vector<Item> &)>;
    using ModeDone = std::function<void(const QString &)>;

    enum Column { Text = 0, Code = 1, Group = 2 };
    static inline const QString automatic = QStringLiteral("Automatic");

    /// `toolLimitMs` is how long a tool may keep us waiting.
    explicit ResolutionContainer(int toolLimitMs = Commands::timeLimitMs);

    /// Reads the modes of the monitor that is connected now and calls `done` from the event loop, unless
    /// `context` is gone by then. Firmware that does not reply leaves "Automatic" alone. Readings asked for
    /// during another share its result.
    void getResolutions(QObject *context, const ModesDone &done);
    /// The modes as last read; empty before the first reading.
    const std::vector<Item> &resolutions() const;
    /// Asks the resolution tool what is set now; empty when it does not say.
    void getActualMode(QObject *context, const ModeDone &done);
    /// The call that sets a stored resolution, if `modes` has it.
    static std::optional<ToolCall> callFor(const std::vector<Item> &modes, const QString &stored);
    /// The row of a stored resolution in `modes`; -1 when it is not among them.
    static int rowIn(const std::vector<Item> &modes, const QString &stored);

    /// Reads the modes anew; asks the firmware twice. What cannot be read is left out.
    const std::vector<Item> &getResolutions();

    /// Whether a size, or the size and rate of a display text, is one that the monitor offers now.
    bool isCheckedResolution(const QString &size);
    /// The row of a stored resolution in the list as last read; -1 when it is not among them.
    int getCurrentPrimaryResolution(const QString &stored) const;
    /// What the resolution tool says is set now; it is not asked while the firmware does not answer.
    QString getActualMode();

    /// Sets the mode of a display text. One that is not in the list changes nothing.
    void setResolution(const QString &text);
    /// Sets a mode of the list.
    void setPrimaryResolution(const Item *mode) const;
    /// Sets a stored resolution, as a console sends it. One that the monitor does not offer changes nothing.
    void setResolutionFromConsole(const QString &size);

    /// The order of the list: "Automatic", then by width, height and rate.
    static bool compare_name(const Item &left, const Item &right);

private:
    struct Waiter
    {
        QPointer<QObject> context;
        ModesDone done;
    };

    void readGroups(const QStringList &groups);
    void finishReading();
    void addModes(const QByteArray &output, const QString &group);
    void readModes(const QString &group);
    /// As `getCurrentPrimaryResolution`; what is not in the list is looked for in a new one.
    int rowOf(const QString &stored);

    QuickTool m_firmware;
    QuickTool m_resolutionTool;
    std::vector<Item> m_modes;     ///< empty until first read
    std::vector<Item> m_readModes; ///< of the reading under way
    std::vector<Waiter> m_waiting;
};
