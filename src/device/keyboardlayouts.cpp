// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/keyboardlayouts.h"

#include "device/listfile.h"
#include "device/paths.h"

namespace KeyboardLayouts {

QVector<KeyboardLayout> read()
{
    QVector<KeyboardLayout> layouts;
    for (const QStringList &fields : ListFile::read(Paths::keyboardLayouts()))
        layouts += {fields.value(0), fields.value(1), fields.value(2, fields.value(0))};
    return layouts;
}

QString variantOf(const QString &code)
{
    for (const KeyboardLayout &layout : read()) {
        if (layout.code == code)
            return layout.variant;
    }
    return QString();
}

} // namespace KeyboardLayouts
