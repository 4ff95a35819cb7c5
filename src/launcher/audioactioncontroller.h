// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "device/audiodevice.h"

#include <QActionGroup>
#include <QJsonObject>
#include <QMenu>
#include <QObject>

class QToolButton;

/// The audio buttons of the top bar with their menus, and which device the sessions use.
///
/// The user's choice is kept while its device is away; meanwhile the priorities decide, and what they have
/// chosen is marked in the menu.
class AudioActionController : public QObject
{
    Q_OBJECT

public:
    /// The buttons outlive the object.
    AudioActionController(QToolButton &output, QToolButton &input, QObject *parent = nullptr);

    /// Takes over the "audio settings" of a document.
    void setSettings(const QJsonObject &audio);

public slots:
    void getAudioDevices(const QList<AudioDevice> &devices);
    void outputActionTriggered(QAction *action);
    void inputActionTriggered(QAction *action);
    /// New orders, best first. What is used follows them at once.
    void setPriorities(const QStringList &output, const QStringList &input);
    void setOutputAudioPriority(const QStringList &priority);
    void setInputAudioPriority(const QStringList &priority);

signals:
    /// Another device is to be used. The checked one is the user's choice; empty as long as there is none.
    void outputChosen(const QString &name, const QString &number, const QString &checkedName,
                      const QString &checkedNumber);
    void inputChosen(const QString &name, const QString &number, const QString &checkedName,
                     const QString &checkedNumber);

private:
    struct Side
    {
        AudioDirection direction;
        QToolButton &button;
        QMenu menu{};
        QActionGroup actions{nullptr};
        AudioChoice checked{}; ///< what the user has chosen
        AudioChoice inUse{};
        QStringList priority{};
    };

    void setUp(Side &side, const QString &heading);
    void rebuild(Side &side);
    QAction *addAction(Side &side, const QString &text, int device);
    void trigger(Side &side, const QAction *action);
    void checkChoosedOutputAction();
    void checkChoosedInputAction();
    void check(Side &side);
    void announce(const Side &side);

    Side m_output;
    Side m_input;
    QList<AudioDevice> m_devices;
    bool m_devicesRead = false;
};
