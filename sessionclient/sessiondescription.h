// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QUrl>

/// One session as the launcher requests it. Texts contain no control characters; see parseConnection().
struct SessionDescription
{
    QString address;
    int width = 0; ///< 0: the width of the screen
    int height = 0;
    int bitsPerPixel = 24;
    bool secondDisplay = false;

    bool logOn = false;
    QString domain;
    QString user;
    QString password;

    bool startProgram = false;
    QString program;
    QString directory;

    bool sound = false;
    QString deviceName;
    QUrl proxy; ///< empty: a direct connection

    /// True for a member of a server group. The launcher tries the next member at once, so nothing may wait
    /// for the user.
    bool autoDisconnect = false;
};
