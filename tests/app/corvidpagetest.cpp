// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcher/corvidpage.h"
#include "launcher/rdppage.h"
#include "app/resources.h"
#include "config/keys.h"
#include "parts.h"

#include <QtTest>
#include <QtWidgets>

namespace {

QJsonObject group(const QString &name, int servers)
{
    QJsonArray members;
    for (int number = 1; number <= servers; ++number) {
        members += QJsonObject{{Key::serverName, QString("server %1").arg(number)},
                               {Key::serverAddress, QString("10.0.0.%1").arg(number)}};
    }
    return {{Key::groupName, name}, {Key::servers, members}};
}

/// Groups "0", "1", ... of two servers each.
QJsonArray groups(int count)
{
    QJsonArray result;
    for (int number = 0; number < count; ++number)
        result += group(QString::number(number), 2);
    return result;
}

QMap<QString, QHostAddress> found(const QStringList &names)
{
    QMap<QString, QHostAddress> servers;
    for (const QString &name : names)
        servers.insert(name, QHostAddress("10.0.0.9"));
    return servers;
}

} // namespace

/// The lists and the entry of an address from which the user chooses a Corvid server.
class CorvidPageTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Resources::apply(*qApp); }
    void init()
    {
        m_page = std::make_unique<CorvidPage>();
        m_page->resize(832, 500);
        m_page->show();
        QVERIFY(QTest::qWaitForWindowActive(m_page.get()));
    }

    void keepsTheChoiceWhenGroupsAreReadAnew()
    {
        m_page->setGroups(groups(3));
        groupView()->expand(row(1));
        groupView()->setCurrentIndex(row(1, 1));
        const QSignalSpy changes(m_page.get(), &CorvidPage::targetChanged);
        QJsonArray more = groups(3);
        more.prepend(group("server 2", 1));
        m_page->setGroups(more);
        QCOMPARE(m_page->target()->address, "10.0.0.2");
        QVERIFY(groupView()->isExpanded(row(2)) && !groupView()->isExpanded(row(1)));
        m_page->setGroups(groups(1));
        QCOMPARE(target(), QString());
        QVERIFY(!changes.isEmpty());
    }

    void keepsTheChoiceWhenServersAreSoughtAnew()
    {
        const QStringList names{"a", "b", "c"};
        m_page->setServerList(found(names));
        foundView()->setCurrentIndex(foundView()->model()->index(1, 0));
        m_page->autoDetectServers();
        QCOMPARE(foundView()->model()->index(0, 0).data().toString(), "\tSearching...");
        QCOMPARE(target(), "b");
        m_page->autoDetectServers();
        m_page->setServerList(found(names));
        QCOMPARE(target(), "b");
        const QString address = m_page->target()->address;
        m_page->setServerList({});
        QCOMPARE(foundView()->model()->index(0, 0).data().toString(), "\tNo Servers found");
        for (int search = 0; search < 2; ++search) { // missing more than once
            m_page->setServerList(found({"a", "c"}));
            QCOMPARE(foundView()->currentIndex().data().toString(), "b (not found)");
            QCOMPARE(target(), "b");
            QCOMPARE(m_page->target()->address, address);
        }
        foundView()->setCurrentIndex(foundView()->model()->index(1, 0));
        m_page->setServerList(found({"a", "c"}));
        QCOMPARE(target(), "c");
        QCOMPARE(foundView()->model()->rowCount(), 2);
    }

    void followsTheStoredRdpServer()
    {
        RdpPage page;
        page.setServer("old", true);
        page.setServer("new", true);
        QCOMPARE(page.target()->address, "new");
        part<QLineEdit>(page, "rdpAddressLineEdit")->setText("typed");
        page.setServer("newer", true);
        QCOMPARE(page.target()->address, "typed");
    }

private:
    QTreeView *groupView() const { return part<QTreeView>(*m_page, "groupServerTreeView"); }
    QTreeView *foundView() const { return part<QTreeView>(*m_page, "detectedView"); }
    QModelIndex row(int number, int child = -1) const
    {
        const QModelIndex top = groupView()->model()->index(number, 0);
        return child < 0 ? top : groupView()->model()->index(child, 0, top);
    }
    /// What Connect would connect to.
    QString target() const
    {
        const auto chosen = m_page->target();
        return chosen ? chosen->name : QString();
    }

    std::unique_ptr<CorvidPage> m_page;
};

QTEST_MAIN(CorvidPageTest)
#include "corvidpagetest.moc"
