// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

/// The style sheets that change while the program runs. The look as a whole is resources/style.qss.
namespace StyleSheets {

const QString &audioSheet();       ///< the menus of the audio buttons
const QString &powerButtonSheet(); ///< the menu of the power button
const QString &noLinkWiredSheet();
const QString &linkWiredSheet();
const QString &connectedWiredSheet();
/// A template: %1 is the image of the signal bars, %2 the image of the state drawn over it.
const QString &wirelessIconSheet();
const QString &checkedButtonSheet(); ///< the connection-type button of the page that is shown
const QString &uncheckedButtonSheet();
const QString &manuallyDesktopSheet_1(); ///< an active entry
const QString &manuallyDesktopSheet_2(); ///< an inactive entry

} // namespace StyleSheets
