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

/// An empty stored hash equals that of no text: with the protection on, nothing opens it.
bool matches(const QString &password, const QString &storedHash)
{
    const QByteArray hash = QCryptographicHash::hash(password.toUtf8(), QCryptographicHash::Md5);
    return QString::fromLatin1(hash.toHex()) == storedHash;
}

} // namespace

namespace AdministratorPassword {

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
    if (matches(dialog.getInput(), general.value(Key::setupPasswordHash).toString()))
        return true;
    GeneralDialog::showError(parent, Texts::tr("Authentication error"), Texts::tr("Wrong password"));
    return false;
}

} // namespace AdministratorPassword
