// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

class QJsonObject;
class QWidget;

/// The password that the document may put before the settings and before leaving the launcher.
namespace AdministratorPassword {

/// Returns the hash of a password as the document stores it.
QString hashOf(const QString &password);

/// Asks for the password and says so when it is wrong. True when it was right, and at once when none is set.
bool ask(QWidget *parent, const QJsonObject &root);

} // namespace AdministratorPassword
