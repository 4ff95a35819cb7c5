// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "pausewatch.h"

#include <QString>
#include <QVector>

#include <algorithm>
#include <utility>

/// How long the device's tools take: a fault of the lab.
struct ToolSpeed
{
    QString name;
    QString fault; ///< empty: none
    QString call;  ///< empty: every tool
};

/// What is measured in one use of the launcher.
struct Use
{
    QVector<double> paints;
    QVector<std::pair<QString, PauseWatch::Figures>> phases; ///< in their order
    double infoMs = 0;
    double knownInfoMs = 0;
    int toolCalls = 0;

    double longestMs() const
    {
        double result = 0;
        for (const auto &phase : phases)
            result = std::max(result, phase.second.longestMs);
        return result;
    }
    double lateShare() const
    {
        double late = 0;
        double total = 0;
        for (const auto &phase : phases) {
            late += phase.second.lateMs;
            total += phase.second.totalMs;
        }
        return total > 0 ? late / total : 0;
    }
};

/// The phases in which a screen is built for the first time.
extern const QString buildingPhase;
extern const QString showingPhase;

/// Uses the launcher on a new device as its user and a console would.
Use measureUse(const ToolSpeed &speed, bool quickly);
