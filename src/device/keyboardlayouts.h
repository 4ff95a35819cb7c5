// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QVector>

/// One line of the device's list of keyboard layouts.
struct KeyboardLayout
{
    QString code;    ///< stored in the document; first argument of the keyboard tool
    QString variant; ///< second argument of the keyboard tool
    QString name;    ///< shown to the user
};

namespace KeyboardLayouts {

QVector<KeyboardLayout> read();
/// The variant of the first layout with this code; empty when the device's list has none.
QString variantOf(const QString &code);

} // namespace KeyboardLayouts
