// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcheruse.h"

#include "userlauncher.h"

#include "update/consoleformat.h"

#include <QElapsedTimer>
#include <QThread>

#include <cstdio>
#include <future>
#include <tuple>

const QString buildingPhase = QStringLiteral("the settings opened first");
const QString showingPhase = QStringLiteral("each page shown first");

namespace {

constexpr int replyLimitMs = 60000;
constexpr int infoLimitMs = 40000;
constexpr int paintRuns = 4;
constexpr double slowPaintMs = 2000;
constexpr int pages = 14;
constexpr int madePauseMs = 200;

const QString starting = QStringLiteral("after the first paint");
const QString idle = QStringLiteral("idle");
const QString merging = QStringLiteral("a console's merge");
const QString polling = QStringLiteral("idle, Wi-Fi polled");
const QString reopening = QStringLiteral("the settings opened again");
const QString applying = QStringLiteral("Apply of every page");

/// Editors of each page with an effect, for one Apply each; those whose Apply would ask or lead elsewhere are
/// left out.
const char *const edits[][2] = {
    {"GeneralPage", "deviceNameLineEdit"},
    {"ConnectionPage", "allowManualAddressCheckBox"},
    {"KioskModePage", "autologonCheckBox"},
    {"DisplayPage", "screenSaverSpinBox"},
    {"DisplayPage", "primaryResolutionComboBox"},
    {"AudioPage", "toolbarIconCheckBox"},
    {"NetworkPage", "ethernetCheckBox"},
    {"NetworkPage", "ethernetCheckBox"},
    {"KeyboardPage", "numLockCheckBox"},
    {"DateTimePage", "timezoneComboBox"},
    {"DateTimePage", "ntpCheckBox"},
    {"ManagementPage", "qmdManagementCheckBox"},
    {"PeripheralsPage", "hidsComboBox"},
    {"FirmwarePage", "urlRadioButton urlLineEdit"},
};

/// Changes most sections at once, and switches Wi-Fi on.
QByteArray merge()
{
    const QByteArray json = R"({"firmware info":{"configuration version":15},
"general settings":{"device name":"bench"},"keyboard settings":{"layout":"DE","numlock on":true},
"display settings":{"primary":{"resolution":"1280x800 60Hz"},"screen saver timeout":7},
"date time settings":{"timezone":"Europe/Berlin","ntp server":"ntp.bench"},
"network settings":{"interfaces":{"wlan":{"enabled":true,"ssid":"Visitors","security":"open"}}}})";
    return ConsoleFormat::setJsonRequest(json).value();
}

double milliseconds(const QElapsedTimer &clock)
{
    return static_cast<double>(clock.nsecsElapsed()) / 1e6;
}

/// Sends one request; returns the time until its reply.
double ask(const QByteArray &request)
{
    const ConsoleLoad load;
    QElapsedTimer clock;
    clock.start();
    load.send(request);
    if (!load.receive(infoLimitMs))
        std::fprintf(stderr, "a request got no reply\n");
    return milliseconds(clock);
}

double askInfo()
{
    return ask(ConsoleFormat::request(ConsoleFormat::Command::DeviceInfo));
}

/// Uses the launcher as its user and a console would, step by step, under the eye of the watch.
class Session
{
public:
    Session(UserLauncher &launcher, Use &use, bool quickly)
        : m_launcher(launcher)
        , m_use(use)
        , m_quickly(quickly)
    { }

    void run()
    {
        end(starting, 1500);
        end(idle, m_quickly ? 2000 : 4000);
        ask(merge());
        end(merging, 1500);
        auto info = std::async(std::launch::async, [] {
            return std::pair<double, double>{askInfo(), askInfo()};
        });
        end(polling, m_quickly ? 2000 : 6000);
        showSettings();
        applyPages();
        std::tie(m_use.infoMs, m_use.knownInfoMs) = info.get();
        checkWatch();
    }

private:
    void end(const QString &phase, int afterMs)
    {
        QThread::msleep(static_cast<unsigned long>(afterMs));
        m_use.phases.append({phase, m_watch.take()});
    }

    void press(const char *button)
    {
        m_launcher.act(QStringLiteral("press ") + QLatin1String(button));
        QThread::msleep(200);
    }

    void showSettings()
    {
        press("settingsButton");
        end(buildingPhase, 300);
        for (int row = 0; row < pages; ++row) {
            m_launcher.act(QStringLiteral("show %1").arg(row));
            QThread::msleep(150);
        }
        end(showingPhase, 0);
        press("backButton");
        press("settingsButton");
        press("backButton");
        end(reopening, 100);
    }

    void applyPages()
    {
        for (const auto &edit : edits) {
            press("settingsButton");
            for (const QString &editor : QString::fromLatin1(edit[1]).split(QLatin1Char(' ')))
                m_launcher.act(QStringLiteral("change %1 %2").arg(QLatin1String(edit[0]), editor));
            press("applyButton");
        }
        end(applying, 1500);
    }

    /// The watch must find a pause that we make. On a busy machine it may miss one, since it must run itself.
    void checkWatch()
    {
        double found = 0;
        for (int tries = 0; tries < 3; ++tries) {
            m_watch.take();
            m_launcher.act(QStringLiteral("pause %1").arg(madePauseMs));
            found = m_watch.take().longestMs;
            if (found >= 0.9 * madePauseMs && found <= 5 * madePauseMs)
                return;
        }
        qFatal("a pause of %d ms was seen as %.0f ms", madePauseMs, found);
    }

    PauseWatch m_watch;
    UserLauncher &m_launcher;
    Use &m_use;
    const bool m_quickly;
};

} // namespace

Use measureUse(const ToolSpeed &speed, bool quickly)
{
    std::fprintf(stderr, "tools: %s\n", qPrintable(speed.name));
    Use use;
    const auto prepare = [&](const BenchDevice &device) {
        if (!speed.fault.isEmpty())
            device.setFault(speed.fault, speed.call);
    };
    // A start that waits for its tools is slow enough not to be repeated.
    for (int run = 0; run < paintRuns && (run == 0 || use.paints.constLast() < slowPaintMs); ++run) {
        const BenchDevice device;
        prepare(device);
        use.paints += UserLauncher(QStringLiteral("kt-bench-launcher"), device).millisecondsToPaint();
    }
    const BenchDevice device;
    prepare(device);
    UserLauncher launcher(QStringLiteral("kt-bench-launcher"), device);
    use.paints += launcher.millisecondsToPaint();
    if (!ConsoleLoad().waitForDevice(replyLimitMs))
        qFatal("the launcher does not answer");
    Session(launcher, use, quickly).run();
    use.toolCalls = device.toolCalls();
    if (device.toolCalls("check-wireless-point") == 0)
        qFatal("Wi-Fi was not polled");
    return use;
}
