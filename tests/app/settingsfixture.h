// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "pages/settingspage.h"
#include "programfixture.h"

#include <QJsonObject>

#include <memory>

/// A device whose settings are opened, changed and applied in the window.
class SettingsFixture : public QObject
{
protected:
    const QString configuration = "/var/lib/kt964/config.json";

    static QJsonObject without(QJsonObject document, const QStringList &sections)
    {
        for (const QString &section : sections)
            document.remove(section);
        return document;
    }

    /// A device that has been started once.
    void makeDevice()
    {
        m_program.reset();
        m_device = std::make_unique<TestDevice>();
        m_device->setPlainSound();
        restart();
        TestDevice::waitForTools();
        m_device->forgetCalls();
    }

    template <typename Part>
    Part *part(const char *name) const
    {
        return m_program->part<Part>(name);
    }
    SettingsPage *page(const QString &className) const
    {
        for (auto *candidate : m_program->window.findChildren<SettingsPage *>()) {
            if (candidate->metaObject()->className() == className)
                return candidate;
        }
        return nullptr;
    }
    bool settingsShown() const { return m_program->settingsShown(); }
    void enter() const { m_program->openSettings(); }
    void apply() const { m_program->apply(); }

    void restart()
    {
        m_program.reset();
        m_program = std::make_unique<StartedProgram>();
        m_program->window.show();
        QTRY_VERIFY(!m_program->program.audio().devices().isEmpty());
    }

    std::unique_ptr<TestDevice> m_device;
    std::unique_ptr<StartedProgram> m_program;
};
