// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcher/stylesheets.h"

namespace StyleSheets {

namespace {

QString menuSheet()
{
    return QStringLiteral(
        "QMenu { background-color: rgb(222, 222, 222); color: #2B2D2F; border: 1px solid #A9ADB0;"
        " padding: 8px 0px; }"
        "QMenu::item { padding: 12px 48px 12px 16px; min-width: 96px; }"
        "QMenu::item:selected { background-color: rgb(131, 182, 43); color: #1C2608; }"
        "QMenu::icon { padding-left: 16px; }");
}

QString wiredSheet(const char *colour)
{
    return QStringLiteral("QLabel{border-image: url(:/images/thin_client_icon_ethernet_with_%1.png)"
                          " 0 0 0 0 stretch stretch;}")
        .arg(QLatin1String(colour));
}

QString modeButtonSheet(const char *background)
{
    return QStringLiteral(
               "QPushButton { background-color: %1; color: white; font: bold 14px; border-radius: 3px;"
               " border: 2px solid transparent; padding: 0px 16px; min-height: 36px; }"
               "QPushButton:hover { background-color: rgb(101, 161, 23); }"
               "QPushButton:focus { border-color: white; }")
        .arg(QLatin1String(background));
}

QString entrySheet(const char *colour)
{
    return QStringLiteral("QPushButton { color: %1; border: none; outline: none; background: transparent;"
                          " font: bold 16px; padding: 8px 0px; }"
                          "QPushButton:focus { text-decoration: underline; }")
        .arg(QLatin1String(colour));
}

} // namespace

const QString &audioSheet()
{
    static const QString sheet
        = menuSheet()
        + QStringLiteral(
              "QMenu::item { padding-left: 24px; }"
              "QMenu::indicator { width: 20px; height: 20px; left: 16px; border: 1px solid #7C8185;"
              " border-radius: 11px; background: white; }"
              "QMenu::indicator:checked { background: #4A7A10; border-color: #4A7A10;"
              " image: url(:/images/radio.png); }"
              "QLabel, QLabel:disabled { font-size: 13px; font-weight: bold; color: #2B2D2F;"
              " padding: 8px 12px; }");
    return sheet;
}

const QString &powerButtonSheet()
{
    static const QString sheet = menuSheet();
    return sheet;
}

const QString &noLinkWiredSheet()
{
    static const QString sheet = wiredSheet("red");
    return sheet;
}

const QString &linkWiredSheet()
{
    static const QString sheet = wiredSheet("yellow");
    return sheet;
}

const QString &connectedWiredSheet()
{
    static const QString sheet = wiredSheet("green");
    return sheet;
}

const QString &wirelessIconSheet()
{
    static const QString sheet = QStringLiteral(
        "QLabel{background-image: url(:/images/%1); background-position: center;"
        " background-repeat: no-repeat; border-image: url(:/images/%2) 0 0 0 0 stretch stretch;}");
    return sheet;
}

const QString &checkedButtonSheet()
{
    static const QString sheet = modeButtonSheet("rgb(131, 182, 43)");
    return sheet;
}

const QString &uncheckedButtonSheet()
{
    static const QString sheet = modeButtonSheet("transparent");
    return sheet;
}

const QString &manuallyDesktopSheet_1()
{
    static const QString sheet = entrySheet("#83B62B");
    return sheet;
}

const QString &manuallyDesktopSheet_2()
{
    static const QString sheet = entrySheet("#525252");
    return sheet;
}

} // namespace StyleSheets
