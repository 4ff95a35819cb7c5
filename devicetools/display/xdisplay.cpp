// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "devicetools-display/xdisplay.h"

#include "devicetools/tool.h"

#include <QHash>

#include <cstdlib>
#include <cstring>
#include <functional>
#include <vector>
#include <unistd.h>

#include <X11/Xlib.h>
#include <X11/extensions/Xrandr.h>
#include <X11/extensions/dpms.h>

namespace {

constexpr int neededMajor = 1;
constexpr int neededMinor = 3;
/// More is no list of a graphics card, or of a monitor.
constexpr int outputLimit = 64;
constexpr int modeLimit = 1000;
constexpr long edidWords = 32 * 1024 / 4;
constexpr int longestTimeout = 32767;
constexpr double pixelsPerInch = 96;

bool errorSeen = false;

int noteError(Display *, XErrorEvent *)
{
    errorSeen = true;
    return 0;
}

int loseServer(Display *)
{
    Tool::fail(QStringLiteral("the X server is gone"));
    _exit(Tool::Failed);
}

template <typename Record>
using Owned = std::unique_ptr<Record, std::function<void(Record *)>>;

Owned<XRRScreenResources> resourcesOf(Display *display, bool probed)
{
    const Window root = DefaultRootWindow(display);
    return {probed ? XRRGetScreenResources(display, root) : XRRGetScreenResourcesCurrent(display, root),
            [](XRRScreenResources *resources) {
                if (resources)
                    XRRFreeScreenResources(resources);
            }};
}

Owned<XRROutputInfo> outputInfo(Display *display, XRRScreenResources *resources, RROutput output)
{
    return {XRRGetOutputInfo(display, resources, output), [](XRROutputInfo *info) {
                if (info)
                    XRRFreeOutputInfo(info);
            }};
}

Owned<XRRCrtcInfo> crtcInfo(Display *display, XRRScreenResources *resources, RRCrtc crtc)
{
    return {crtc ? XRRGetCrtcInfo(display, resources, crtc) : nullptr, [](XRRCrtcInfo *info) {
                if (info)
                    XRRFreeCrtcInfo(info);
            }};
}

MonitorMode toMode(const XRRModeInfo &info)
{
    MonitorMode mode;
    mode.id = static_cast<quint32>(info.id);
    mode.timing.width = static_cast<int>(info.width);
    mode.timing.height = static_cast<int>(info.height);
    mode.timing.horizontalTotal = static_cast<int>(info.hTotal);
    mode.timing.verticalTotal = static_cast<int>(info.vTotal);
    mode.timing.clockKhz = static_cast<int>((info.dotClock + 500) / 1000);
    mode.timing.interlaced = (info.modeFlags & RR_Interlace) != 0;
    return mode;
}

bool isUsable(const XRRModeInfo &info)
{
    constexpr unsigned int largest = 32767;
    return info.width > 0 && info.height > 0 && info.width <= largest && info.height <= largest
        && info.hTotal <= largest && info.vTotal <= largest && !(info.modeFlags & RR_DoubleScan);
}

QVector<MonitorMode> modesOf(const XRROutputInfo &info, const QHash<quint32, MonitorMode> &known)
{
    std::vector<MonitorMode> modes; // GCC 12 warns of QVector's growth here, in vain
    for (int index = 0; index < info.nmode && index < modeLimit; ++index) {
        const auto mode = known.constFind(static_cast<quint32>(info.modes[index]));
        if (mode == known.constEnd())
            continue;
        modes.push_back(*mode);
        modes.back().isPreferred = index < info.npreferred;
    }
    return {modes.begin(), modes.end()};
}

XTransform scaling(const QSize &shown, const QSize &picture)
{
    XTransform transform = {};
    transform.matrix[0][0] = XDoubleToFixed(double(shown.width()) / picture.width());
    transform.matrix[1][1] = XDoubleToFixed(double(shown.height()) / picture.height());
    transform.matrix[2][2] = XDoubleToFixed(1);
    return transform;
}

/// A controller that can drive the output and drives no other: the one that does so now, if possible.
RRCrtc freeCrtc(const XRROutputInfo &output, const QVector<RRCrtc> &taken)
{
    if (output.crtc && !taken.contains(output.crtc))
        return output.crtc;
    for (int index = 0; index < output.ncrtc; ++index) {
        if (!taken.contains(output.crtcs[index]))
            return output.crtcs[index];
    }
    return 0;
}

bool showsSame(const XRRCrtcInfo *info, const Placement &placement)
{
    return info && info->mode == placement.mode && info->x == placement.position.x()
        && info->y == placement.position.y() && static_cast<int>(info->width) == placement.shown.width()
        && static_cast<int>(info->height) == placement.shown.height() && info->noutput == 1
        && info->outputs[0] == placement.output;
}

QString checkRoom(Display *display, const QSize &screen)
{
    int widest = 0;
    int highest = 0;
    int least = 0;
    if (!XRRGetScreenSizeRange(display, DefaultRootWindow(display), &least, &least, &widest, &highest)
        || (screen.width() <= widest && screen.height() <= highest))
        return {};
    return QStringLiteral("the graphics card has no room for %1x%2 pixels")
        .arg(screen.width())
        .arg(screen.height());
}

/// A controller for each placement; 0 where none is left.
QVector<RRCrtc> crtcsFor(Display *display, XRRScreenResources *resources, const DisplayLayout &layout)
{
    QVector<RRCrtc> crtcs;
    for (const Placement &placement : layout.placements) {
        const auto info = outputInfo(display, resources, placement.output);
        crtcs += info ? freeCrtc(*info, crtcs) : 0;
    }
    return crtcs;
}

/// Switches off what shows something else than it is to show.
void switchOffOthers(Display *display, XRRScreenResources *resources, const DisplayLayout &layout,
                     const QVector<RRCrtc> &crtcs)
{
    for (int index = 0; index < resources->ncrtc; ++index) {
        const RRCrtc id = resources->crtcs[index];
        const auto crtc = crtcInfo(display, resources, id);
        const int place = crtcs.indexOf(id);
        const bool isOn = crtc && crtc->mode != 0;
        if (isOn && (place < 0 || !showsSame(crtc.get(), layout.placements.at(place))))
            XRRSetCrtcConfig(display, resources, id, CurrentTime, 0, 0, 0, RR_Rotate_0, nullptr, 0);
    }
}

void resize(Display *display, const QSize &size)
{
    Window root = DefaultRootWindow(display);
    int position = 0;
    unsigned int width = 0;
    unsigned int height = 0;
    unsigned int other = 0;
    // Setting the size that is set already would be an event for every window.
    if (XGetGeometry(display, root, &root, &position, &position, &width, &height, &other, &other)
        && size == QSize(static_cast<int>(width), static_cast<int>(height)))
        return;
    const auto millimetres = [](int pixels) {
        return static_cast<int>(pixels * 25.4 / pixelsPerInch);
    };
    XRRSetScreenSize(display, root, size.width(), size.height(), millimetres(size.width()),
                     millimetres(size.height()));
}

/// Not every driver can scale; one that cannot refuses even the scale of 1.
void scale(Display *display, RRCrtc crtc, const Placement &placement)
{
    XRRCrtcTransformAttributes *attributes = nullptr;
    const bool known = XRRGetCrtcTransform(display, crtc, &attributes) && attributes;
    const XTransform wanted = scaling(placement.shown, placement.picture);
    const bool isSet = known
        && std::memcmp(&attributes->currentTransform.matrix, &wanted.matrix, sizeof wanted.matrix) == 0;
    if (attributes)
        XFree(attributes);
    if (isSet)
        return;
    const bool isScaled = placement.shown != placement.picture;
    XTransform transform = wanted;
    XRRSetCrtcTransform(display, crtc, &transform, isScaled ? "bilinear" : "", nullptr, 0);
}

bool show(Display *display, XRRScreenResources *resources, RRCrtc crtc, const Placement &placement)
{
    if (showsSame(crtcInfo(display, resources, crtc).get(), placement))
        return true;
    scale(display, crtc, placement);
    RROutput output = placement.output;
    return XRRSetCrtcConfig(display, resources, crtc, CurrentTime, placement.position.x(),
                            placement.position.y(), placement.mode, RR_Rotate_0, &output, 1)
        == RRSetConfigSuccess;
}

} // namespace

std::unique_ptr<XDisplay> XDisplay::open()
{
    qputenv("DISPLAY", qEnvironmentVariable("DISPLAY", QStringLiteral(":0")).toLocal8Bit());
    if (!qEnvironmentVariableIsSet("XAUTHORITY"))
        qputenv("XAUTHORITY", "/run/kt964/Xauthority");
    XSetErrorHandler(noteError);
    XSetIOErrorHandler(loseServer);
    Display *display = XOpenDisplay(nullptr);
    if (!display) {
        Tool::fail(QStringLiteral("no X server at ") + qEnvironmentVariable("DISPLAY"));
        return nullptr;
    }
    auto result = std::unique_ptr<XDisplay>(new XDisplay(display));
    int major = 0;
    int minor = 0;
    if (!XRRQueryVersion(display, &major, &minor)
        || std::make_pair(major, minor) < std::make_pair(neededMajor, neededMinor)) {
        Tool::fail(QStringLiteral("the X server cannot set modes (RandR 1.3)"));
        return nullptr;
    }
    return result;
}

XDisplay::XDisplay(_XDisplay *display)
    : m_display(display)
{ }

XDisplay::~XDisplay()
{
    XCloseDisplay(m_display);
}

QVector<Output> XDisplay::outputs()
{
    const auto resources = resourcesOf(m_display, true);
    if (!resources)
        return {};
    QHash<quint32, MonitorMode> modes;
    for (int index = 0; index < resources->nmode; ++index) {
        if (isUsable(resources->modes[index]))
            modes.insert(static_cast<quint32>(resources->modes[index].id), toMode(resources->modes[index]));
    }
    const RROutput primary = XRRGetOutputPrimary(m_display, DefaultRootWindow(m_display));
    QVector<Output> outputs;
    for (int index = 0; index < resources->noutput && index < outputLimit; ++index) {
        const RROutput id = resources->outputs[index];
        const auto info = outputInfo(m_display, resources.get(), id);
        if (!info)
            continue;
        const auto crtc = crtcInfo(m_display, resources.get(), info->crtc);
        Output output;
        output.id = static_cast<quint32>(id);
        output.name = QString::fromUtf8(info->name, info->nameLen);
        output.isConnected = info->connection == RR_Connected;
        output.isPrimary = id == primary;
        output.modes = modesOf(*info, modes);
        output.edid = edid(output.id);
        if (crtc) {
            output.currentMode = static_cast<quint32>(crtc->mode);
            output.position = {crtc->x, crtc->y};
        }
        outputs += output;
    }
    return outputs;
}

QByteArray XDisplay::edid(quint32 output)
{
    const Atom property = XInternAtom(m_display, RR_PROPERTY_RANDR_EDID, True);
    if (property == 0)
        return {};
    unsigned char *bytes = nullptr;
    int format = 0;
    unsigned long size = 0;
    unsigned long left = 0;
    Atom type = 0;
    const int status = XRRGetOutputProperty(m_display, output, property, 0, edidWords, False, False,
                                            AnyPropertyType, &type, &format, &size, &left, &bytes);
    QByteArray result;
    if (status == 0 && bytes && format == 8 && size <= edidWords * 4)
        result = QByteArray(reinterpret_cast<const char *>(bytes), static_cast<int>(size));
    if (bytes)
        XFree(bytes);
    return result;
}

DisplayLayout XDisplay::current()
{
    const auto resources = resourcesOf(m_display, false);
    DisplayLayout layout;
    if (!resources)
        return layout;
    const RROutput primary = XRRGetOutputPrimary(m_display, DefaultRootWindow(m_display));
    for (int index = 0; index < resources->ncrtc && index < outputLimit; ++index) {
        const auto crtc = crtcInfo(m_display, resources.get(), resources->crtcs[index]);
        if (!crtc || crtc->mode == 0 || crtc->noutput < 1)
            continue;
        const QSize shown(static_cast<int>(crtc->width), static_cast<int>(crtc->height));
        Placement placement{static_cast<quint32>(crtc->outputs[0]), static_cast<quint32>(crtc->mode),
                            QPoint(crtc->x, crtc->y), shown, shown};
        for (int mode = 0; mode < resources->nmode; ++mode) {
            if (resources->modes[mode].id == crtc->mode)
                placement.picture = {static_cast<int>(resources->modes[mode].width),
                                     static_cast<int>(resources->modes[mode].height)};
        }
        if (crtc->outputs[0] == primary)
            layout.placements.prepend(placement);
        else
            layout.placements.append(placement);
    }
    return layout;
}

QString XDisplay::apply(const DisplayLayout &layout)
{
    if (layout.placements.isEmpty())
        return QStringLiteral("no monitor is connected");
    const DisplayLayout before = current();
    QString problem = configure(layout);
    if (!problem.isEmpty() && layout.isScaled())
        problem = configure(layout.unscaled());
    if (!problem.isEmpty() && !before.placements.isEmpty())
        configure(before);
    return problem;
}

/// The screen changes its size only while no controller shows more than it has, and nobody sees the steps.
QString XDisplay::configure(const DisplayLayout &layout)
{
    QString reason = checkRoom(m_display, layout.screen());
    if (!reason.isEmpty())
        return reason;
    const auto resources = resourcesOf(m_display, false);
    if (!resources)
        return QStringLiteral("the X server does not describe its screen");
    const QVector<RRCrtc> crtcs = crtcsFor(m_display, resources.get(), layout);
    if (crtcs.contains(0))
        return QStringLiteral("the graphics card cannot drive that many displays");

    errorSeen = false;
    XGrabServer(m_display);
    switchOffOthers(m_display, resources.get(), layout, crtcs);
    resize(m_display, layout.screen());
    bool done = true;
    for (int place = 0; place < layout.placements.size(); ++place)
        done = show(m_display, resources.get(), crtcs.at(place), layout.placements.at(place)) && done;
    if (done)
        XRRSetOutputPrimary(m_display, DefaultRootWindow(m_display), layout.placements.first().output);
    XUngrabServer(m_display);
    XSync(m_display, False);
    return done && !errorSeen ? QString() : QStringLiteral("the X server refuses the mode");
}

void XDisplay::setBlanking(int minutes)
{
    const int seconds = static_cast<int>(qBound(qint64(0), qint64(minutes) * 60, qint64(longestTimeout)));
    XSetScreenSaver(m_display, seconds, 0, PreferBlanking, DefaultExposures);
    int event = 0;
    int error = 0;
    if (DPMSQueryExtension(m_display, &event, &error) && DPMSCapable(m_display)) {
        const auto timeout = static_cast<CARD16>(seconds);
        DPMSSetTimeouts(m_display, timeout, timeout, timeout);
        seconds > 0 ? DPMSEnable(m_display) : DPMSDisable(m_display);
    }
    if (seconds == 0)
        XResetScreenSaver(m_display);
    XSync(m_display, False);
}
