// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcher/popups.h"

#include <QApplication>
#include <QDialog>

namespace {
/// A dialog may be open in front of another one.
constexpr int deepestDialog = 4;
} // namespace

void Popups::closeAll()
{
    if (QWidget *popup = QApplication::activePopupWidget())
        popup->close();
    for (int depth = 0; depth < deepestDialog; ++depth) {
        if (auto *question = qobject_cast<QDialog *>(QApplication::activeModalWidget()))
            question->reject();
    }
}
