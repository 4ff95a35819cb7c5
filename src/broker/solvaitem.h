// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "models/item.h"

/// The row of a broker, without anything beyond `Item`. Desktops are plain `Item`s.
class SolvaItem : public Item
{
public:
    explicit SolvaItem(const QString &name = QString());
    ~SolvaItem() override;
};
