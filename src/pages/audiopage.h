// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "device/audiodevice.h"
#include "pages/settingspage.h"

#include <memory>

class AudioController;
class QComboBox;
class QListWidget;
class QPushButton;

namespace Ui {
class AudioPage;
}

/// Sets the sound devices, the order of their substitutes, and whether the top bar shows audio buttons.
class AudioPage : public SettingsPage
{
    Q_OBJECT

public:
    /// `audio` must outlive the page.
    AudioPage(JsonModule &configuration, AudioController &audio, QWidget *parent = nullptr);
    ~AudioPage() override;

protected:
    void load(const QJsonObject &root) override;
    void save(QJsonObject &root) override;

private:
    struct Side
    {
        AudioDirection direction;
        QComboBox &devices;
        QListWidget &priority;
        QPushButton &up;
        QPushButton &down;
        QStringList kinds;
        QString offText;
        AudioChoice shown{};
        QStringList shownPriority{};
    };

    void setUp(Side &side);
    void setAudioTab(const QJsonObject &audio);
    void saveAudioTab(QJsonObject &audio) const;
    void loadDevices(Side &side, const QJsonObject &audio);
    void loadPriority(Side &side, const QJsonObject &audio);
    void moveEntry(Side &side, int step);
    static void updateButtons(const Side &side);
    static AudioChoice chosen(const Side &side);
    static QStringList priority(const Side &side);

    std::unique_ptr<Ui::AudioPage> m_ui;
    AudioController &m_audio;
    Side m_output;
    Side m_input;
};
