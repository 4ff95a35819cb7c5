// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "config/jsonmodule.h"
#include "parts.h"
#include "testdevice.h"

#include <utility>

/// A device of its own and the document that it holds.
struct HeldDocument
{
    explicit HeldDocument(const QJsonObject &document)
        : configuration("config.json", true)
    {
        device.setDocument(document);
        configuration.readContent();
    }

    TestDevice device;
    JsonModule configuration;
};

/// A settings page over a device's document, filled and shown. Pages that need more than the document get it
/// as further arguments.
template <typename Page>
struct OpenedPage : HeldDocument
{
    template <typename... Needs>
    explicit OpenedPage(const QJsonObject &document, Needs &&...needs)
        : HeldDocument(document)
        , page(configuration, std::forward<Needs>(needs)...)
    {
        page.fill();
        page.show();
    }

    Page page;
};
