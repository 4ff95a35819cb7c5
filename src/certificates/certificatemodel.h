// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "certificates/certificatestore.h"

#include <QAbstractTableModel>
#include <QVector>

/// The certificates of one kind, as a table for the security page or as the entries of a combo box. It
/// follows changes of the store.
class CertificateModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Name, Issuer, ValidFrom, ValidTo, State };
    enum class Use {
        Table,
        Choice, ///< for a combo box: starts with "None", and the name includes the state
    };
    /// The value that the Wi-Fi settings store for a row; empty for "None".
    static constexpr int ValueRole = Qt::UserRole;

    /// `store` outlives the model.
    CertificateModel(CertificateStore &store, CertificateStore::Kind kind, Use use,
                     QObject *parent = nullptr);

    CertificateStore::Kind kind() const;
    /// The row's certificate; without a file name for "None" and for an invalid row.
    Certificate certificate(int row) const;
    /// -1 if the file is not listed.
    int rowOf(const QString &fileName) const;

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    /// A certificate's state, for the user.
    static QString stateText(const Certificate &certificate);

public slots:
    /// Reads the store again.
    void reload();

private:
    QString text(const Certificate &certificate, int column) const;
    QString choice(const Certificate &certificate) const;

    CertificateStore &m_store;
    CertificateStore::Kind m_kind;
    Use m_use;
    QVector<Certificate> m_rows;
};
