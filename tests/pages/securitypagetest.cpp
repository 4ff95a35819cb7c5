// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "certificates/certificatemodel.h"
#include "config/jsonmodule.h"
#include "dialoganswer.h"
#include "pages/certificatedialog.h"
#include "pages/securitypage.h"
#include "testcertificate.h"
#include "testdevice.h"

#include <QtTest>
#include <QtWidgets>

namespace {
const QString section = "security settings";
}

/// The security page as an administrator uses it.
class SecurityPageTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_device = std::make_unique<TestDevice>();
        m_device->setDocument({{section, QJsonObject()}, {"server groups", QJsonArray()}});
        m_document = std::make_unique<JsonModule>("config.json", true);
        m_store = std::make_unique<CertificateStore>(*m_document);
        m_page = std::make_unique<SecurityPage>(*m_document, *m_store);
        m_document->readContent();
        m_page->fill();
        m_page->show();
    }

    void cleanup()
    {
        m_page.reset();
        m_store.reset();
        m_document.reset();
        m_device.reset();
    }

    void importsAtOnce()
    {
        const DialogAnswer answer(true, "right");
        QSignalSpy changed(m_page.get(), &SettingsPage::changed);
        QVERIFY(!part<QPushButton>("removeButton")->isEnabled());
        import(m_authority.pem(), "company.pem");
        QCOMPARE(answer.messages, QStringList());
        QCOMPARE(part<QLabel>("statusLabel")->text(), "Company CA was imported.");
        import(m_authority.pem() + m_user.pem() + TestCertificate("third").pem(), "all.pem");
        QCOMPARE(part<QLabel>("statusLabel")->text(), "2 certificates were imported. 1 were stored already.");
        QVERIFY(part<QTreeView>("authorityView")->selectionModel()->hasSelection());
        import(m_user.pkcs12("right"), "jdoe.p12");
        QCOMPARE(answer.messages, QStringList{"Enter the password of jdoe.p12."});
        QCOMPARE(recorded("ca certificates").size(), 3);
        QCOMPARE(recorded("client certificates").size(), 1);
        QVERIFY(m_device->document().contains("server groups"));

        QVERIFY(!part<QTreeView>("authorityView")->selectionModel()->hasSelection());
        QVERIFY(part<QTreeView>("clientView")->selectionModel()->hasSelection());
        QVERIFY(part<QPushButton>("removeButton")->isEnabled());
        QCOMPARE(changed.count(), 0);
        QVERIFY(!m_page->isChanged());
    }

    void asksForThePasswordAndGivesUp()
    {
        const QByteArray before = m_device->read("/var/lib/kt964/config.json");
        {
            const DialogAnswer wrong(true, "wrong");
            import(m_user.pkcs12("right"), "jdoe.p12");
            const QString again = "Wrong password for jdoe.p12.";
            QCOMPARE(wrong.messages,
                     QStringList({"Enter the password of jdoe.p12.", again, again,
                                  "jdoe.p12 was not imported. The password is wrong."}));
        }
        const DialogAnswer cancel(false);
        import(m_user.pkcs12("right"), "jdoe.p12");
        QCOMPARE(cancel.messages.size(), 1);
        QVERIFY(m_store->list(CertificateStore::Kind::Client).isEmpty());
        QCOMPARE(m_device->read("/var/lib/kt964/config.json"), before);
    }

    void tellsWhatIsWrong()
    {
        const DialogAnswer answer(true);
        import(m_authority.pem(), "a");
        import(m_authority.der(), "a");
        import("rubbish", "<i>a\n");
        import(m_user.keyPem(), "a");
        import(m_user.keyPem() + m_user.pem(), "a");
        import(QByteArray(2 * 1024 * 1024, 'x'), "a");
        QCOMPARE(answer.messages.size(), 5);
        QVERIFY(answer.messages.at(0).contains("is stored already"));
        QVERIFY(answer.messages.at(1).startsWith("<i>a\uFFFD was not imported."));
        QVERIFY(answer.messages.at(1).contains("no certificate"));
        QVERIFY(answer.messages.at(2).contains("private key without"));
        QVERIFY(answer.messages.at(3).contains("PKCS#12"));
        QVERIFY(answer.messages.at(4).contains("too large"));
        QCOMPARE(recorded("ca certificates").size(), 1);
    }

    void removesAfterAQuestion()
    {
        import(m_authority.pem() + m_user.pem(), "all.pem");
        auto *view = part<QTreeView>("authorityView");
        {
            const DialogAnswer keep(false);
            QTest::mouseClick(part<QPushButton>("removeButton"), Qt::LeftButton);
            QCOMPARE(keep.titles, QStringList{"Remove certificate"});
            QVERIFY(keep.messages.first().startsWith("Remove Company CA?"));
        }
        QCOMPARE(recorded("ca certificates").size(), 2);
        const DialogAnswer agree(true);
        QTest::keyClick(view, Qt::Key_Delete);
        QTRY_COMPARE(view->model()->rowCount(), 1);
        QVERIFY(
            view->selectionModel()->hasSelection()); // the next one, for whoever goes on from the keyboard
        QTest::mouseClick(part<QPushButton>("removeButton"), Qt::LeftButton);
        QCOMPARE(recorded("ca certificates"), QJsonArray());
        QVERIFY(!part<QPushButton>("viewButton")->isEnabled());
        QVERIFY(!m_device->exists("/var/lib/kt964/certificates/cacerts/jdoe.pem"));
    }

    void showsHostileTextAsText()
    {
        const QByteArray hostile = "<img src=x>" + QByteArray(9980, 'x') + "the end\n";
        import(TestCertificate(hostile, -9, -2).pem(), "a.pem");
        QVERIFY(m_page->minimumSizeHint().width() <= 720);
        QString details;
        QTimer::singleShot(0, this, [&details] {
            auto *dialog = qobject_cast<CertificateDialog *>(QApplication::activeModalWidget());
            QVERIFY(dialog);
            details = dialog->findChild<QTextEdit *>()->toPlainText();
            QVERIFY(dialog->minimumSizeHint().width() <= 720);
            dialog->reject();
        });
        QTest::keyClick(part<QTreeView>("authorityView"), Qt::Key_Return);
        QVERIFY(details.startsWith("State\nExpired\nSubject\nCN=\\<img src=x\\>"));
        QVERIFY(details.contains("xxthe end\\0A"));
        QVERIFY(details.contains(QRegularExpression("fingerprint\n([0-9A-F]{2}:){31}[0-9A-F]{2}\n")));
    }

    void correctsTheRecordWhenItIsShown()
    {
        import(m_authority.pem(), "a.pem");
        m_page->hide();
        QFile::remove(m_device->path("/var/lib/kt964/certificates/cacerts/a.pem"));
        m_page->show();
        QCOMPARE(part<QTreeView>("authorityView")->model()->rowCount(), 0);
        QCOMPARE(recorded("ca certificates"), QJsonArray());
    }

private:
    void import(const QByteArray &bytes, const QString &name)
    {
        m_device->write(QString("/media/") + name, bytes);
        const QString path = m_device->path(QString("/media/") + name);
        m_page->setFileChooser([path](QWidget *) { return path; });
        QTest::mouseClick(part<QPushButton>("importButton"), Qt::LeftButton);
    }

    template <typename Widget>
    Widget *part(const char *name) const
    {
        return m_page->findChild<Widget *>(QLatin1String(name));
    }
    QJsonArray recorded(const char *key) const
    {
        return m_device->document().value(section).toObject().value(QLatin1String(key)).toArray();
    }

    std::unique_ptr<TestDevice> m_device;
    std::unique_ptr<JsonModule> m_document;
    std::unique_ptr<CertificateStore> m_store;
    std::unique_ptr<SecurityPage> m_page;
    const TestCertificate m_authority{"Company CA"};
    const TestCertificate m_user{"jdoe"};
};

QTEST_MAIN(SecurityPageTest)
#include "securitypagetest.moc"
