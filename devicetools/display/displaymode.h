// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "devicetools-display/modetable.h"

#include <QByteArray>
#include <QString>
#include <QVector>

#include <optional>

/// A mode that a monitor offers, as the X server knows it.
struct MonitorMode
{
    quint32 id = 0; ///< the X server's
    ModeTiming timing;
    bool isPreferred = false;
};

/// A mode as the launcher knows it: by group and code.
struct CodedMode
{
    ModeGroup group = ModeGroup::Dmt;
    int code = 0;
    MonitorMode mode;
};

/// The modes of a monitor, each under one code.
///
/// A mode that both standards have is listed under its CEA code alone, so that no mode appears twice. A mode
/// that neither has gets a code of its own from firstOwnCode on, which depends on its timing alone: the same
/// mode has the same code on every monitor and at any time. It is listed as DMT, or as CEA when it is
/// interlaced, because only CEA modes are marked as such.
namespace DisplayMode {

constexpr int firstOwnCode = 1000;

/// Pictures per second (fields, if interlaced), rounded; 0 when the server does not know.
int rate(const ModeTiming &timing);
/// "1920x1080 60Hz".
QString text(const ModeTiming &timing);
QString name(ModeGroup group);
std::optional<ModeGroup> groupNamed(const QString &name);

/// Of modes that share a code (59.94 and 60 Hz), the preferred one is listed, or else the one that is nearest
/// to the standard's. Ordered by group and code.
QVector<CodedMode> list(const QVector<MonitorMode> &modes);
/// The modes of one group as a JSON array.
QByteArray toJson(const QVector<CodedMode> &modes, ModeGroup group);

std::optional<CodedMode> find(const QVector<CodedMode> &modes, ModeGroup group, int code);
/// The mode that is set, by the X server's number or by one that shares its code.
std::optional<CodedMode> find(const QVector<CodedMode> &modes, const ModeTiming &timing);
/// The mode for a stored resolution: a display text, or a size alone, which means the slowest from 60 Hz on.
std::optional<CodedMode> find(const QVector<CodedMode> &modes, const QString &stored);
/// The mode that the monitor prefers; without a preference, the largest and fastest.
std::optional<CodedMode> preferred(const QVector<CodedMode> &modes);

} // namespace DisplayMode
