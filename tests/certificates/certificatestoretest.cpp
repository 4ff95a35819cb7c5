// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "certificates/certificatemodel.h"
#include "certificates/certificatereader.h"
#include "certificates/certificatestore.h"
#include "config/jsonmodule.h"
#include "fulldisk.h"
#include "testcertificate.h"
#include "testdevice.h"
#include "testtable.h"

#include <QtTest>

using Error = CertificateError;
using Kind = CertificateStore::Kind;
using Password = std::optional<QString>;
Q_DECLARE_METATYPE(CertificateError)
Q_DECLARE_METATYPE(CertificateStore::Kind)
Q_DECLARE_METATYPE(Password)

namespace {

const QString authorities = "/var/lib/kt964/certificates/cacerts/";
const QString clients = "/var/lib/kt964/certificates/";
const QString right = "right";

/// A finished file that asks for so many rounds, where it was made with these, that no device could wait.
constexpr int replacedRounds = 0x011170;

QByteArray endless(const QByteArray &file)
{
    return QByteArray(file).replace(QByteArray("\x02\x03\x01\x11\x70"), QByteArray("\x02\x03\x7F\xFF\xFF"));
}
} // namespace

/// What goes into the store, what does not, and what is left when something goes wrong.
class CertificateStoreTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_device = std::make_unique<TestDevice>();
        QVERIFY(m_device->isValid());
        m_device->setDocument({{"general settings", QJsonObject()}});
        m_document = std::make_unique<JsonModule>("config.json", true);
        m_store = std::make_unique<CertificateStore>(*m_document);
    }

    void cleanup()
    {
        m_store.reset();
        m_document.reset();
        m_device.reset();
    }

    void imports_data()
    {
        const TestTable<QByteArray, Password, Kind, QStringList> table("bytes", "password", "kind", "files");
        const QStringList one{"given.pem"};
        const QStringList both{"First_CA.pem", "Second_CA.pem"};
        const QStringList client{"given.p12"};
        TestCertificate::Pkcs12 old, keyless;
        old.password = keyless.password = "right";
        old.oldCiphers = true;
        old.chain = &m_second;
        keyless.withKey = false;
        keyless.chain = &m_first;
        keyless.other = &m_second;
        table.row("PEM", m_first.pem(), Password(), Kind::Authority, one);
        table.row("PEM of a text editor", "\xEF\xBB\xBF" + m_first.pem().replace("\n", "\r\n"), Password(),
                  Kind::Authority, one);
        table.row("DER", m_first.der(), Password(), Kind::Authority, one);
        table.row("several in PEM, one twice",
                  "0 text\n" + m_first.pem() + "text\n" + m_second.pem() + m_first.pem(), Password(),
                  Kind::Authority, both);
        table.row("PKCS#12", m_user.pkcs12("right"), Password(right), Kind::Client, client);
        table.row("PKCS#12, empty password", m_user.pkcs12(""), Password(), Kind::Client, client);
        table.row("PKCS#12, old, with a chain", m_user.pkcs12(old), Password(right), Kind::Client, client);
        table.row("PKCS#12 without a key", m_user.pkcs12(keyless), Password(right), Kind::Authority, both);
    }

    void imports()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(Password, password);
        QFETCH(Kind, kind);
        QFETCH(QStringList, files);
        QSignalSpy changed(m_store.get(), &CertificateStore::changed);
        const CertificateStore::Import result = import(bytes, password);
        QCOMPARE(result.error, Error::None);
        QCOMPARE(result.kind, kind);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(names(kind), files);

        const bool client = kind == Kind::Client;
        const Certificate listed = m_store->list(kind).first();
        QCOMPARE(listed.name, client ? QString("jdoe") : "First CA");
        const QByteArray der = client ? m_user.der() : m_first.der();
        QCOMPARE(listed.fingerprint, QCryptographicHash::hash(der, QCryptographicHash::Sha256).toHex());

        const QString path = (client ? clients : authorities) + files.first();
        QCOMPARE(m_device->read(path), client ? bytes : m_first.pem());
        const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
        QCOMPARE(QFile::permissions(m_device->path(path)) & others,
                 client ? QFile::Permissions() : QFile::ReadGroup | QFile::ReadOther);
        const QJsonObject security = m_device->document().value("security settings").toObject();
        const QJsonObject expected{{"file name", files.first()},
                                   {"subject", listed.subject},
                                   {"fingerprint", QString::fromLatin1(listed.fingerprint)},
                                   {"expiry", listed.validTo.toString(Qt::ISODate)}};
        const QString key = client ? QString("client certificates") : "ca certificates";
        QCOMPARE(security.value(key).toArray().size(), files.size());
        QCOMPARE(security.value(key).toArray().first().toObject(), expected);
        QVERIFY(m_device->document().contains("general settings"));
    }

    void refuses_data()
    {
        const TestTable<QByteArray, Password, Error> table("bytes", "password", "error");
        TestCertificate::Pkcs12 foreign;
        foreign.other = &m_first;
        TestCertificate::Pkcs12 slowCheck, slowCipher;
        slowCheck.macRounds = slowCipher.rounds = replacedRounds;
        slowCipher.withMac = false;
        QByteArray many;
        for (int i = 0; i <= CertificateReader::countLimit; ++i)
            many += m_second.pem();
        const Password none;
        table.row("rubbish", "rubbish", none, Error::NotACertificate);
        table.row("one certificate damaged", m_second.pem() + m_user.pem().replace("MII", "MIJ"), none,
                  Error::NotACertificate);
        table.row("no password", m_user.pkcs12("right"), none, Error::PasswordNeeded);
        table.row("wrong password", m_user.pkcs12("right"), Password("wrong"), Error::WrongPassword);
        table.row("key in PEM", m_user.keyPem(), none, Error::KeyWithoutCertificate);
        table.row("key of another certificate", m_user.pkcs12(foreign), none, Error::KeyWithoutCertificate);
        table.row("key in PEM with its certificate", m_user.keyPem() + m_user.pem(), none,
                  Error::KeyOutsidePkcs12);
        table.row("too many", many, none, Error::TooMany);
        table.row("endless check", endless(m_user.pkcs12(slowCheck)), none, Error::Unsupported);
        table.row("endless cipher", endless(m_user.pkcs12(slowCipher)), none, Error::Unsupported);
        table.row("known", m_first.der(), none, Error::Duplicate);
    }

    void refuses()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(Password, password);
        QFETCH(Error, error);
        QCOMPARE(import(m_first.pem()).error, Error::None);
        const auto before = snapshot();
        QSignalSpy changed(m_store.get(), &CertificateStore::changed);
        QCOMPARE(import(bytes, password).error, error);
        QCOMPARE(snapshot(), before);
        QCOMPARE(changed.count(), 0);
    }

    void refusesWhatIsNoFileOrTooLarge()
    {
        const auto before = snapshot();
        QCOMPARE(m_store->importFile(m_device->path("/media/missing")).error, Error::CannotRead);
        QCOMPARE(m_store->importFile(m_device->path("/var")).error, Error::CannotRead);
        m_device->write("/media/large", m_first.pem());
        QFile large(m_device->path("/media/large"));
        QVERIFY(large.resize(100 * 1024 * 1024)); // takes no room
        QCOMPARE(m_store->importFile(large.fileName()).error, Error::TooLarge);
        m_device->write("/var/lib/kt964/config.json", "{ broken");
        QCOMPARE(import(m_first.pem()).error, Error::CannotRecord);
        QCOMPARE(m_device->read("/var/lib/kt964/config.json"), QByteArray("{ broken"));
        QCOMPARE(snapshot().size(), before.size());
    }

    void takesWhatItDoesNotKnowYet()
    {
        QCOMPARE(import(m_second.der()).error, Error::None);
        const CertificateStore::Import result = import(m_first.pem() + m_second.pem() + m_user.pem());
        QCOMPARE(result.files, QStringList({"First_CA.pem", "jdoe.pem"}));
        QCOMPARE(result.known, 1);
        QCOMPARE(import(m_user.pkcs12("right"), right).error,
                 Error::None); // another kind, and so no duplicate
        const auto before = snapshot();
        QCOMPARE(import(m_user.pkcs12("other"), "other").error, Error::Duplicate);
        QCOMPARE(snapshot(), before);
    }

    void keepsHostileNamesInside_data()
    {
        const TestTable<QByteArray, QString, QString, QString> table("commonName", "fileName", "shown",
                                                                     "stored");
        const QString plain = "plain.pem";
        const QString cut = QString(64, 'x');
        table.row("path", "../../x", plain, "../../x", "x.pem");
        table.row("line end", "a\nb\r\x07", plain, "a\uFFFDb\uFFFD\uFFFD", "a_b__.pem");
        table.row("zero byte", QByteArray("a\0b", 3), plain, "a\uFFFDb", "a_b.pem");
        table.row("long", QByteArray(10000, 'x'), plain, cut + QChar(0x2026), cut + ".pem");
        table.row("markup", "<b>$(x)</b>", plain, "<b>$(x)</b>", "b___x___b_.pem");
        table.row("empty", {}, plain, "CN=", "CN_.pem");
        table.row("file", "a", "-rf $HOME\n'.x.pem", "a", "rf__HOME__.x.pem");
    }

    void keepsHostileNamesInside()
    {
        QFETCH(QByteArray, commonName);
        QFETCH(QString, fileName);
        QFETCH(QString, shown);
        QFETCH(QString, stored);
        const TestCertificate hostile(commonName);
        const bool byFile = fileName != "plain.pem";
        const auto before = snapshot();
        const CertificateStore::Import result
            = import(byFile ? hostile.pem() : hostile.pem() + m_first.pem(), std::nullopt, fileName);
        QCOMPARE(result.error, Error::None);
        QCOMPARE(result.files.first(), stored);
        QVERIFY(m_device->exists(authorities + stored));
        QCOMPARE(snapshot().size(), before.size() + (byFile ? 1 : 2));
        const CertificateModel model(*m_store, Kind::Authority, CertificateModel::Use::Table);
        const Certificate listed = model.certificate(model.rowOf(stored));
        QCOMPARE(listed.name, shown);
        QVERIFY(!listed.subject.contains('\n'));
        QVERIFY(m_device->read("/var/lib/kt964/config.json").size() < 4000);
        QCOMPARE(m_store->remove(Kind::Authority, stored), Error::None);
    }

    void survivesCutAndBentFiles()
    {
        const auto before = snapshot();
        for (const QByteArray &whole :
             {m_first.der(), m_first.pem(), m_user.pkcs12("right"), m_user.pkcs12("")}) {
            for (int at = 0; at < whole.size() - 1; at += 37) {
                QVERIFY(import(whole.left(at), right).error != Error::None);
                QByteArray bent = whole;
                bent[at] = static_cast<char>(bent.at(at) ^ 0x15);
                CertificateReader::read(bent, right);
                bent[at] = '\xFF';
                CertificateReader::read(bent);
            }
        }
        QCOMPARE(snapshot(), before);

        TestCertificate::Pkcs12 open; // nothing in front of its inner structure
        open.withMac = open.encrypted = false;
        const QByteArray whole = m_user.pkcs12(open);
        QVERIFY(CertificateReader::read(whole).hasKey);
        for (int at = 0; at < whole.size(); ++at) {
            QByteArray bent = whole;
            bent[at] = static_cast<char>(bent.at(at) ^ (1 << at % 8));
            CertificateReader::read(bent);
        }
    }

    void losesNothingOnAFullDisk()
    {
        QCOMPARE(import(m_first.pem()).error, Error::None);
        QJsonObject document = m_device->document();
        document.insert("filling", QString(30000, 'x'));
        m_device->setDocument(document);
        m_document->readContent();
        const auto before = snapshot();
        const QByteArray two = m_second.pem() + TestCertificate(QByteArray(10000, 'x')).pem();
        const QByteArray client = m_user.pkcs12("");
        const auto size = static_cast<rlim_t>(client.size());
        for (const auto &attempt : {std::make_tuple(two, rlim_t{5000}, Error::CannotWrite),
                                    std::make_tuple(client, size - 1, Error::CannotWrite),
                                    std::make_tuple(client, size, Error::CannotRecord)}) {
            m_device->write("/media/given.file", std::get<0>(attempt));
            const FullDisk disk(std::get<1>(attempt));
            QCOMPARE(m_store->importFile(m_device->path("/media/given.file")).error, std::get<2>(attempt));
            QCOMPARE(snapshot(), before);
            QCOMPARE(m_document->getDocument().object(), document);
        }
        QCOMPARE(import(client).error, Error::None);
    }

    void removes()
    {
        const auto empty = snapshot();
        QCOMPARE(import(m_second.pem(), std::nullopt, "Second_CA.pem").error, Error::None);
        QCOMPARE(import(m_user.pkcs12(""), std::nullopt, "jdoe.p12").error, Error::None);
        const auto before = snapshot();
        for (const char *name : {"", ".", "../config.json", "jdoe.p12", "missing.pem", "../../jdoe.p12"})
            QCOMPARE(m_store->remove(Kind::Authority, QLatin1String(name)), Error::NotInStore);
        QCOMPARE(m_store->remove(Kind::Client, "jdoe.crt"), Error::NotInStore);
        QCOMPARE(snapshot(), before);
        QCOMPARE(m_store->remove(Kind::Authority, "Second_CA.pem"), Error::None);
        QCOMPARE(m_store->remove(Kind::Client, "jdoe.p12"), Error::None);
        QCOMPARE(snapshot().keys(), empty.keys());
    }

    void listsWhatOthersLeftThere()
    {
        m_device->write(authorities + "rubbish", "rubbish");
        m_device->write(authorities + "bundle.der", m_first.der() + m_second.der());
        m_device->write(authorities + ".import-half.pem", "half");
        m_device->write(clients + "locked.p12", m_user.pkcs12("right"));
        QCOMPARE(import(m_user.pkcs12(""), std::nullopt, "orphan.p12").error, Error::None);
        QVERIFY(QFile::remove(m_device->path(clients + "orphan.p12")));
        QVERIFY(m_store->updateRecord());
        QCOMPARE(m_store->list(Kind::Authority).first().moreInFile, 1);
        QVERIFY(!m_store->list(Kind::Authority).last().isKnown());
        QCOMPARE(m_store->list(Kind::Client).first().name, "locked");
        QCOMPARE(import(m_second.pem()).error, Error::Duplicate);
        QVERIFY(!m_device->exists(authorities + ".import-half.pem"));
        QVERIFY(!m_device->exists(clients + "orphan.crt"));
        QCOMPARE(m_store->remove(Kind::Authority, "rubbish"), Error::None);

        QCOMPARE(import(m_user.pkcs12("right"), right, "locked.p12").files, QStringList{"locked-2.p12"});
    }

private:
    CertificateStore::Import import(const QByteArray &bytes, const Password &password = std::nullopt,
                                    const QString &name = "given.file")
    {
        m_device->write(QString("/media/") + name, bytes);
        return m_store->importFile(m_device->path(QString("/media/") + name), password);
    }

    /// Every file in the state directory, with its mode.
    QMap<QString, QByteArray> snapshot() const
    {
        QMap<QString, QByteArray> result;
        QDirIterator files(m_device->path("/var/lib/kt964"), QDir::Files | QDir::Hidden,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            if (!file.open(QIODevice::ReadOnly))
                qFatal("cannot read %s", qPrintable(file.fileName()));
            result[file.fileName()] = QByteArray::number(int(file.permissions()), 16) + ' ' + file.readAll();
        }
        return result;
    }

    QStringList names(Kind kind) const
    {
        QStringList result;
        for (const Certificate &certificate : m_store->list(kind))
            result += certificate.fileName;
        return result;
    }

    std::unique_ptr<TestDevice> m_device;
    std::unique_ptr<JsonModule> m_document;
    std::unique_ptr<CertificateStore> m_store;
    const TestCertificate m_first{"First CA"};
    const TestCertificate m_second{"Second CA"};
    const TestCertificate m_user{"jdoe"};
};

QTEST_GUILESS_MAIN(CertificateStoreTest)
#include "certificatestoretest.moc"
