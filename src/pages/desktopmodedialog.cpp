// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "pages/desktopmodedialog.h"

#include "device/devicetools.h"
#include "pages/administratorpassword.h"
#include "widgets/generaldialog.h"

#include <QCoreApplication>

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(DesktopModeDialog)
};

} // namespace

namespace DesktopModeDialog {

bool ask(QWidget *parent, const QJsonObject &root)
{
    if (!AdministratorPassword::ask(parent, root))
        return false;
    const QString question
        = Texts::tr("Switch this device to its desktop?\n\nThe Raspbian desktop replaces the launcher.");
    if (!GeneralDialog::ask(parent, Texts::tr("Desktop mode"), question))
        return false;
    ToolRun::start(DeviceTools::switchToDesktop(), parent, [parent](const ToolResult &result) {
        if (!result.succeeded())
            GeneralDialog::showError(parent, Texts::tr("Desktop mode"),
                                     Texts::tr("This device has no desktop, or it could not be started."));
    });
    return true;
}

} // namespace DesktopModeDialog
