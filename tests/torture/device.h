// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "config/jsonmodule.h"
#include "device/networkcontroller.h"
#include "device/resolutioncontainer.h"
#include "device/toolqueue.h"
#include "services/sessionservice.h"
#include "services/settingsapplier.h"
#include "services/startdocument.h"
#include "update/updatemodule.h"

/// All of the launcher that keeps files, without its window and its endpoint, in the order of the launcher's
/// start.
struct Device
{
    /// Starts it, and waits until nothing more follows from that. False where the document could not be read,
    /// or the limit has passed.
    bool start();
    /// Waits until what the document asks for has been carried out.
    bool settle();

    JsonModule configuration{QStringLiteral("config.json"), true};
    ToolQueue commands;
    NetworkController network{commands};
    ResolutionContainer resolutions;
    SettingsApplier applier{configuration, commands, network, resolutions};
    StartDocument document{configuration, network, applier};
    SessionService session{configuration};
    UpdateModule update;
};

/// Runs the event loop until the condition holds. False after 20 s.
bool waitUntil(const std::function<bool()> &condition);
