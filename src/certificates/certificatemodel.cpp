// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "certificates/certificatemodel.h"

#include <QColor>
#include <QFont>

#include <algorithm>

namespace {

// Both are readable on white and on a selected row.
const QColor expiredColour(0xA6, 0x1B, 0x1B);
const QColor earlyColour(0x7A, 0x4A, 0x00);

constexpr int columnTotal = CertificateModel::State + 1;

Validity validityNow(const Certificate &certificate)
{
    return validityOf(certificate, QDateTime::currentDateTimeUtc());
}

QString day(const QDateTime &time)
{
    return time.date().toString(Qt::ISODate);
}

QVariant colour(const Certificate &certificate)
{
    switch (validityNow(certificate)) {
    case Validity::Expired:
        return expiredColour;
    case Validity::NotYetValid:
    case Validity::Unknown:
        return earlyColour;
    case Validity::Valid:
        break;
    }
    return QVariant();
}

} // namespace

CertificateModel::CertificateModel(CertificateStore &store, CertificateStore::Kind kind, Use use,
                                   QObject *parent)
    : QAbstractTableModel(parent)
    , m_store(store)
    , m_kind(kind)
    , m_use(use)
{
    connect(&m_store, &CertificateStore::changed, this, &CertificateModel::reload);
    reload();
}

CertificateStore::Kind CertificateModel::kind() const
{
    return m_kind;
}

void CertificateModel::reload()
{
    beginResetModel();
    m_rows = m_store.list(m_kind);
    if (m_use == Use::Choice) {
        m_rows.prepend(Certificate());
        m_rows.first().name = tr("None");
    }
    endResetModel();
}

Certificate CertificateModel::certificate(int row) const
{
    return m_rows.value(row);
}

int CertificateModel::rowOf(const QString &fileName) const
{
    const auto found = std::find_if(m_rows.begin(), m_rows.end(),
                                    [&fileName](const Certificate &row) { return row.fileName == fileName; });
    return found == m_rows.end() ? -1 : static_cast<int>(found - m_rows.begin());
}

int CertificateModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int CertificateModel::columnCount(const QModelIndex &parent) const
{
    if (parent.isValid())
        return 0;
    return m_use == Use::Choice ? 1 : columnTotal;
}

QVariant CertificateModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return QVariant();
    const Certificate &certificate = m_rows.at(index.row());
    const bool marked = index.column() == State && validityNow(certificate) != Validity::Valid;
    switch (role) {
    case Qt::DisplayRole:
        return m_use == Use::Choice ? choice(certificate) : text(certificate, index.column());
    case ValueRole:
        return certificateValue(m_kind, certificate);
    case Qt::ForegroundRole:
        return marked ? colour(certificate) : QVariant();
    case Qt::FontRole:
        if (marked) {
            QFont font;
            font.setBold(true);
            return font;
        }
        return QVariant();
    default:
        return QVariant();
    }
}

QString CertificateModel::text(const Certificate &certificate, int column) const
{
    switch (column) {
    case Issuer:
        return certificate.issuerName;
    case ValidFrom:
        return day(certificate.validFrom);
    case ValidTo:
        return day(certificate.validTo);
    case State:
        return stateText(certificate);
    default:
        return certificate.name;
    }
}

QString CertificateModel::choice(const Certificate &certificate) const
{
    QString result = certificate.name;
    if (certificate.fileName.isEmpty())
        return result;
    const auto namesakes
        = std::count_if(m_rows.begin(), m_rows.end(),
                        [&certificate](const Certificate &row) { return row.name == certificate.name; });
    if (namesakes > 1)
        result = tr("%1, %2").arg(result, certificate.fileName);
    if (validityNow(certificate) != Validity::Valid)
        result = tr("%1 (%2)").arg(result, stateText(certificate));
    return result;
}

QVariant CertificateModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QVariant();
    switch (section) {
    case Name:
        return tr("Certificate");
    case Issuer:
        return tr("Issued by");
    case ValidFrom:
        return tr("Valid from");
    case ValidTo:
        return tr("Valid until");
    case State:
        return tr("State");
    default:
        return QVariant();
    }
}

QString CertificateModel::stateText(const Certificate &certificate)
{
    switch (validityNow(certificate)) {
    case Validity::Expired:
        return tr("Expired");
    case Validity::NotYetValid:
        return tr("Not yet valid");
    case Validity::Valid:
        return tr("Valid");
    case Validity::Unknown:
        break;
    }
    return tr("Unreadable");
}
