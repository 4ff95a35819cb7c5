// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "broker/solvaitem.h"

SolvaItem::SolvaItem(const QString &name)
    : Item(name)
{ }

SolvaItem::~SolvaItem() = default;
