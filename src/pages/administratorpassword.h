// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

class QJsonObject;
class QWidget;

/// The optional password that protects the settings and the way out of the launcher.
namespace AdministratorPassword {

/// Returns the hash of a password as the document stores it.
QString hashOf(const QString &password);

/// Asks for the password and reports a wrong one. Returns true if it was right or no password is set.
bool ask(QWidget *parent, const QJsonObject &root);

} // namespace AdministratorPassword
