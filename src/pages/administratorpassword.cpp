// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "pages/administratorpassword.h"

#include "config/keys.h"
#include "widgets/generaldialog.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QJsonObject>

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(AdministratorPassword)
};

} // namespace

namespace AdministratorPassword {

QString hashOf(const QString &password)
{
    return QString::fromLatin1(QCryptographicHash::hash(password.toUtf8(), QCryptographicHash::Md5).toHex());
}

bool ask(QWidget *parent, const QJsonObject &root)
{
    if (root.isEmpty()) {
        GeneralDialog::showError(parent, Texts::tr("Error"),
                                 Texts::tr("The stored settings cannot be read."));
        return false;
    }
    const QJsonObject general = root.value(Key::general).toObject();
    if (!general.value(Key::setupPasswordEnabled).toBool())
        return true;
    GeneralDialog dialog(parent, GeneralDialog::Prompt);
    dialog.setTitle(Texts::tr("Administrator password"));
    dialog.setMessage(Texts::tr("Administrator password:"));
    dialog.setPasswordMode();
    if (dialog.exec() != QDialog::Accepted)
        return false;
    // No password matches an empty stored hash: while the protection is on, the settings stay closed.
    if (hashOf(dialog.getInput()) == general.value(Key::setupPasswordHash).toString())
        return true;
    GeneralDialog::showError(parent, Texts::tr("Authentication error"), Texts::tr("Wrong password"));
    return false;
}

} // namespace AdministratorPassword
