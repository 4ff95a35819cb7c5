// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "device/toolrun.h"
#include "models/item.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <optional>
#include <vector>

/// The modes of the connected monitor: reads them from the board's firmware, and knows the calls that set
/// them.
///
/// A mode is an Item: its display text ("1920x1080 60Hz"), its code, and its group ("DMT" or "CEA"). The
/// first of the list is "Automatic", which leaves the choice to the device. A stored resolution is a display
/// text, or a size alone ("1920x1080"), which means the first mode of that size.
class ResolutionContainer : public QObject
{
    Q_OBJECT

public:
    enum Column { Text = 0, Code = 1, Group = 2 };
    using ModesDone = std::function<void(const std::vector<Item> &)>;
    using ModeDone = std::function<void(const QString &)>;

    static inline const QString automatic = QStringLiteral("Automatic");

    explicit ResolutionContainer(QObject *parent = nullptr);

    /// Reads the modes of the monitor that is connected now and calls `done` from the event loop, unless
    /// `context` is gone by then. Firmware that does not reply leaves "Automatic" alone. Readings asked for
    /// during another share its result.
    void getResolutions(QObject *context, const ModesDone &done);
    /// The modes as last read; empty before the first reading.
    const std::vector<Item> &resolutions() const;
    /// Whether the modes as last read offer a stored resolution.
    bool isCheckedResolution(const QString &stored) const;
    /// Asks the resolution tool what is set now; empty when it does not say.
    void getActualMode(QObject *context, const ModeDone &done);
    /// Of two modes with one text, this one comes first from now on: it is the one that was chosen or is in
    /// use.
    void prefer(const QString &group, const QString &code);

    /// Sets a stored resolution at once. One that the monitor does not offer changes nothing.
    void setResolutionFromConsole(const QString &stored);

    /// The call that sets a stored resolution, if `modes` has it.
    static std::optional<ToolCall> callFor(const std::vector<Item> &modes, const QString &stored);
    /// The row of a stored resolution in `modes`; -1 when it is not among them.
    static int rowIn(const std::vector<Item> &modes, const QString &stored);
    /// The order of the list: "Automatic", then by width, height and rate.
    static bool compare_name(const Item &left, const Item &right);

private:
    struct Waiter
    {
        QPointer<QObject> context;
        ModesDone done;
    };

    void readGroups(const QStringList &groups);
    void addModes(const QByteArray &output, const QString &group);
    void finishReading();
    void sort(std::vector<Item> &modes) const;

    std::vector<Item> m_modes;     ///< empty until first read
    std::vector<Item> m_readModes; ///< of the reading under way
    std::vector<Waiter> m_waiting;
    QString m_preferredGroup;
    QString m_preferredCode;
};
