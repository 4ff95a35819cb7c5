// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "certificates/certificatemodel.h"
#include "dialoganswer.h"
#include "openedpage.h"
#include "pages/certificatedialog.h"
#include "pages/securitypage.h"
#include "testcertificate.h"

#include <QtTest>
#include <QtWidgets>

namespace {

const QString section = "security settings";

struct Opened : HeldDocument
{
    Opened()
        : HeldDocument({{section, QJsonObject()}, {"server groups", QJsonArray()}})
    {
        page.fill();
        page.show();
    }

    void import(const QByteArray &bytes, const QString &name)
    {
        const QString path = device.path("/media/" + name);
        device.write("/media/" + name, bytes);
        page.setFileChooser([path](QWidget *) { return path; });
        press(page, "importButton");
    }
    QJsonArray recorded(const QString &key) const { return device.stored({section, key}).toArray(); }
    QTreeView *authorities() const { return part<QTreeView>(page, "authorityView"); }
    QString status() const { return part<QLabel>(page, "statusLabel")->text(); }

    CertificateStore store{configuration};
    SecurityPage page{configuration, store};
};

} // namespace

/// The security page as an administrator uses it.
class SecurityPageTest : public QObject
{
    Q_OBJECT

private slots:
    void importsAtOnce()
    {
        Opened opened;
        const DialogAnswer answer(true, "right");
        const QSignalSpy changed(&opened.page, &SettingsPage::changed);
        opened.import(m_authority.pem(), "company.pem");
        QCOMPARE(answer.messages, QStringList());
        opened.import(m_authority.pem() + m_user.pem() + TestCertificate("third").pem(), "all.pem");
        QCOMPARE(opened.status(), "2 certificates were imported. 1 were stored already.");
        opened.import(m_user.pkcs12("right"), "jdoe.p12");
        QCOMPARE(answer.messages, QStringList{"Enter the password of jdoe.p12."});
        QCOMPARE(opened.recorded("ca certificates").size(), 3);
        QCOMPARE(opened.recorded("client certificates").size(), 1);
        QVERIFY(opened.device.document().contains("server groups"));
        QVERIFY(changed.isEmpty() && !opened.page.isChanged());
    }

    void asksForThePasswordAndGivesUp()
    {
        Opened opened;
        const QJsonObject before = opened.device.document();
        {
            const DialogAnswer wrong(true, "wrong");
            opened.import(m_user.pkcs12("right"), "jdoe.p12");
            const QString again = "Wrong password for jdoe.p12.";
            QCOMPARE(wrong.messages,
                     QStringList({"Enter the password of jdoe.p12.", again, again,
                                  "jdoe.p12 was not imported. The password is wrong."}));
        }
        const DialogAnswer cancel(false);
        opened.import(m_user.pkcs12("right"), "jdoe.p12");
        QCOMPARE(cancel.messages.size(), 1);
        QVERIFY(opened.store.list(CertificateStore::Kind::Client).isEmpty());
        QCOMPARE(opened.device.document(), before);
    }

    void removesAfterAQuestion()
    {
        Opened opened;
        opened.import(m_authority.pem() + m_user.pem(), "all.pem");
        auto *view = opened.authorities();
        {
            const DialogAnswer keep(false);
            press(opened.page, "removeButton");
            QCOMPARE(keep.titles, QStringList{"Remove certificate"});
            QVERIFY(keep.messages.first().startsWith("Remove Company CA?"));
        }
        QCOMPARE(opened.recorded("ca certificates").size(), 2);
        const DialogAnswer agree(true);
        QTest::keyClick(view, Qt::Key_Delete);
        QTRY_COMPARE(view->model()->rowCount(), 1);
        QVERIFY(view->selectionModel()->hasSelection()); // the next one, for the keyboard
        press(opened.page, "removeButton");
        QCOMPARE(opened.recorded("ca certificates"), QJsonArray());
        QVERIFY(!part<QPushButton>(opened.page, "viewButton")->isEnabled());
        QVERIFY(!opened.device.exists("/var/lib/kt964/certificates/cacerts/jdoe.pem"));
    }

    void showsHostileTextAsText()
    {
        Opened opened;
        const QByteArray hostile = "<img src=x>" + QByteArray(9980, 'x') + "the end\n";
        opened.import(TestCertificate(hostile, -9, -2).pem(), "a.pem");
        QVERIFY(opened.page.minimumSizeHint().width() <= 720);
        QString details;
        QTimer::singleShot(0, this, [&details] {
            auto *dialog = qobject_cast<CertificateDialog *>(QApplication::activeModalWidget());
            QVERIFY(dialog);
            details = dialog->findChild<QTextEdit *>()->toPlainText();
            QVERIFY(dialog->minimumSizeHint().width() <= 720);
            dialog->reject();
        });
        QTest::keyClick(opened.authorities(), Qt::Key_Return);
        QVERIFY(details.startsWith("State\nExpired\nSubject\nCN=\\<img src=x\\>"));
        QVERIFY(details.contains("xxthe end\\0A"));
        QVERIFY(details.contains(QRegularExpression("fingerprint\n([0-9A-F]{2}:){31}[0-9A-F]{2}\n")));
    }

private:
    const TestCertificate m_authority{"Company CA"};
    const TestCertificate m_user{"jdoe"};
};

QTEST_MAIN(SecurityPageTest)
#include "securitypagetest.moc"
