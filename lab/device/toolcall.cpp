// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "lab-device/toolcall.h"

#include <QFileInfo>

QString ToolCall::fileFor(const QString &labFolder) const
{
    QString candidate = root.labFile(labFolder + QLatin1Char('/') + name);
    QString found = QFileInfo(candidate).isFile() ? candidate : QString();
    for (const QString &word : arguments) {
        if (word.contains(QLatin1Char('/')) || candidate.size() + word.size() > 1000)
            break;
        candidate += QLatin1Char('.') + word;
        if (QFileInfo(candidate).isFile())
            found = candidate;
    }
    return found;
}
