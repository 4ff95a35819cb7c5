// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QFile>
#include <QHash>
#include <QObject>
#include <QSet>
#include <QTimer>

/// The database of USB identifiers: the names of vendors and of their products, a line each, products behind
/// a tab.
///
/// The file is read once, when the first name is asked for, and as far as a database of usual size reaches.
/// What lies beyond in an oversized one is searched piece by piece while the event loop runs.
class UsbIdentifiers : public QObject
{
    Q_OBJECT

public:
    explicit UsbIdentifiers(const QString &path, QObject *parent = nullptr);

    /// The names of vendor and product. Empty when there is none, or none yet: `named` tells it then.
    QString name(const QString &vid, const QString &pid);

signals:
    /// A name that `name` could not answer was found; `id` is "03ba:04ce".
    void named(const QString &id, const QString &name);

private:
    struct Vendor
    {
        int id = -1;
        QByteArray name;
    };
    struct Product
    {
        QByteArray vendorName;
        QByteArray line; ///< a view into the text that was parsed
    };

    template <typename Take>
    static void parse(const QByteArray &text, Vendor &vendor, Take take);
    static QString nameOf(const Product &product);

    bool readHead();
    void readOn();
    void searchFor(quint32 key);
    void endSearch();

    QFile m_file;
    QByteArray m_head;                  ///< the beginning of the file, whole lines
    Vendor m_headVendor;                ///< whose products follow on the head
    QHash<quint32, Product> m_products; ///< what the head names
    bool m_headIsAll = false;

    QTimer m_timer;   ///< runs while the rest of the file is searched
    QByteArray m_cut; ///< the line that the last piece ended in
    Vendor m_vendor;
    QSet<quint32> m_wanted;
    QHash<quint32, QString> m_found; ///< what the rest of the file names, or does not name (empty)
};
