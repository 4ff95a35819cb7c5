// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "update/urlfilemodule.h"

#include "device/diagnostics.h"
#include "config/applicationproxy.h"
#include "device/proxyfactory.h"
#include "update/firmwareimage.h"

#include <QAuthenticator>
#include <QLoggingCategory>
#include <QNetworkReply>
#include <QRegularExpression>

Q_LOGGING_CATEGORY(lcUrl, "kt.update.url")
Q_LOGGING_CATEGORY(lcUrlCredentials, "kt.update.url.credentials")

namespace {

const QString notFound()
{
    return UrlFileModule::tr("Download error: File not found");
}

/// Error texts may contain the whole URL.
QString withoutCredentials(QString text)
{
    static const QRegularExpression userInfo(QStringLiteral("//[^/\\s]*@"));
    return text.replace(userInfo, QStringLiteral("//"));
}

/// FTP is the default scheme. A user name put in front of a path leaves "@/".
QString normalised(const QUrl &url)
{
    QString text = url.toString(QUrl::FullyEncoded);
    if (!text.contains(QLatin1String("://")))
        text.prepend(QLatin1String("ftp://"));
    return text.replace(QLatin1String("@/"), QLatin1String("@"));
}

/// The network layer also opens local files and other schemes, which are no downloads.
bool isFetchable(const QUrl &url)
{
    static const QStringList schemes{QStringLiteral("ftp"), QStringLiteral("http"), QStringLiteral("https")};
    return url.isValid() && !url.host().isEmpty() && schemes.contains(url.scheme());
}

bool isFtp(const QUrl &url)
{
    return url.scheme() == QLatin1String("ftp");
}

} // namespace

UrlFileModule::UrlFileModule(QObject *parent)
    : QObject(parent)
{
    m_abortTimer.setSingleShot(true);
    m_abortTimer.setInterval(silenceLimitMs);
    connect(&m_progressTimer, &QTimer::timeout, this, &UrlFileModule::fsm_ReportProgress);
    connect(&m_abortTimer, &QTimer::timeout, this, &UrlFileModule::fsm_abort);
    connect(&m_tool, &FtpProxyTool::progress, this,
            [this](int percentage) { emit ask_DownloadProgress(shownUrl(), percentage, 100); });
    connect(&m_tool, &FtpProxyTool::ended, this, [this](bool succeeded) {
        if (succeeded)
            emit ask_DownloadProgress(shownUrl(), 100, 100);
        emit downloadFinished(succeeded ? QString() : notFound());
    });
}

UrlFileModule::~UrlFileModule() = default;

UrlFileModule::State UrlFileModule::state() const
{
    return m_state;
}

void UrlFileModule::setSilenceLimit(int milliseconds)
{
    m_abortTimer.setInterval(milliseconds);
}

QString UrlFileModule::shownUrl() const
{
    return m_url.toString(QUrl::RemoveUserInfo);
}

void UrlFileModule::post(void (UrlFileModule::*step)())
{
    QTimer::singleShot(0, this, step);
}

void UrlFileModule::end(Error error)
{
    m_error = error;
    m_state = State::CleanUp;
    post(&UrlFileModule::fsm_CleanUp);
}

void UrlFileModule::failTransfer()
{
    emit downloadFinished(notFound());
    end(Error::Transfer);
}

void UrlFileModule::fsm_StartTransfer(const QUrl &url, bool reportProgress)
{
    if (m_state != State::Idle)
        return;
    m_error = Error::None;
    m_attempts = 0;
    m_received = 0;
    m_total = 0;
    m_file = FirmwareImage::stage();
    if (!m_file) {
        end(Error::LocalFile);
        return;
    }
    m_url = QUrl(normalised(url));
    if (!isFetchable(m_url)) {
        qCCritical(lcUrl, "%s:  invalid URL - %s", Q_FUNC_INFO,
                   qPrintable(withoutCredentials(normalised(url)).left(1000)));
        failTransfer();
        return;
    }
    const QNetworkProxy proxy = QNetworkProxy::applicationProxy();
    if (isFtp(m_url) && !proxy.hostName().isEmpty() && !ApplicationProxy::goesDirect(m_url.host()))
        startTool(proxy);
    else
        startDownload(reportProgress);
}

void UrlFileModule::startDownload(bool reportProgress)
{
    qCInfo(lcUrl).noquote() << "fetch" << shownUrl();
    m_manager = new HttpAccess(this);
    m_manager->setProxyFactory(
        new ProxyFactory(QNetworkProxy::applicationProxy(), ApplicationProxy::goesDirect));
    m_abortTimer.start();
    if (reportProgress)
        m_progressTimer.start(progressMs);
    m_state = State::Started;
    connect(m_manager, &QNetworkAccessManager::authenticationRequired, this,
            &UrlFileModule::fsm_Authenticate);
    connect(m_manager, &QNetworkAccessManager::finished, this, &UrlFileModule::fsm_Finished);
    connect(m_manager, &QNetworkAccessManager::proxyAuthenticationRequired, this,
            &UrlFileModule::fsm_ProxyAuthenticate);

    // With HTTP the user information would be sent by itself, before the first attempt counts.
    QNetworkRequest request(isFtp(m_url) ? m_url : m_url.adjusted(QUrl::RemoveUserInfo));
    request.setRawHeader("Accept-Encoding", "identity"); // the image is written unchanged
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setMaximumRedirectsAllowed(redirectsLimit);
    m_reply = m_manager->get(request);
    m_reply->setReadBufferSize(readBufferSize);
    connect(m_reply, &QNetworkReply::metaDataChanged, this, &UrlFileModule::checkLength);
    connect(m_reply, &QNetworkReply::readyRead, this, &UrlFileModule::fsm_SkipAuthentication);
    connect(m_reply, &QNetworkReply::readyRead, this, &UrlFileModule::fsm_ReadData);
    connect(m_reply, &QNetworkReply::downloadProgress, this, &UrlFileModule::fsm_DownloadProgress);
    connect(m_reply, &QNetworkReply::finished, this, &UrlFileModule::fsm_TransferFinished);
}

void UrlFileModule::fsm_SkipAuthentication()
{
    if (m_state != State::Started)
        return;
    m_state = State::Receiving;
    post(&UrlFileModule::fsm_ReadData);
}

void UrlFileModule::fsm_ReadData()
{
    if (m_state != State::Receiving)
        return;
    m_abortTimer.start();
    const Error error = copyToFile();
    if (error != Error::None)
        end(error);
}

UrlFileModule::Error UrlFileModule::copyToFile()
{
    const QByteArray bytes = m_reply->readAll();
    if (m_reply->error() != QNetworkReply::NoError) {
        qCCritical(lcUrl, "%s: read data [%d] %s", Q_FUNC_INFO, m_reply->error(),
                   qPrintable(withoutCredentials(m_reply->errorString())));
        emit downloadFinished(notFound());
        return Error::Transfer;
    }
    // The first bytes show that the server has the image.
    if (!bytes.isEmpty() && m_file->size() == 0 && hasImageStatus()
        && !FirmwareImage::makeRoom(announcedLength()))
        return Error::LocalFile;
    if (FirmwareImage::append(*m_file, bytes) && m_file->flush())
        return Error::None;
    qCCritical(lcUrl, "%s: file error [%d] %s", Q_FUNC_INFO, m_file->error(),
               qPrintable(m_file->errorString()));
    return Error::LocalFile;
}

void UrlFileModule::fsm_DownloadProgress(qint64 received, qint64 total)
{
    m_received = received;
    m_total = total;
    fsm_ReportProgress();
}

/// Refuses a file that does not fit on the disk before it is downloaded.
void UrlFileModule::checkLength()
{
    const bool awaited = m_state == State::Started || m_state == State::Receiving;
    if (awaited && !FirmwareImage::fits(announcedLength() - m_file->size()))
        end(Error::LocalFile);
}

/// Zero when unknown.
qint64 UrlFileModule::announcedLength() const
{
    return m_reply->header(QNetworkRequest::ContentLengthHeader).toLongLong();
}

/// FTP has no status.
bool UrlFileModule::hasImageStatus() const
{
    const QVariant status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
    return !status.isValid() || status.toInt() == 200;
}

void UrlFileModule::fsm_ReportProgress()
{
    if (m_state == State::Receiving)
        emit ask_DownloadProgress(shownUrl(), m_received, m_total);
}

void UrlFileModule::fsm_Authenticate(QNetworkReply *reply, QAuthenticator *authenticator)
{
    if (m_state != State::Started)
        return;
    ++m_attempts;
    // A redirection may lead to another host, which must not get the password.
    if (m_attempts < attemptsLimit && reply->url().host() == m_url.host()) {
        authenticator->setUser(m_url.userName(QUrl::FullyDecoded));
        authenticator->setPassword(m_url.password(QUrl::FullyDecoded));
        return;
    }
    qCCritical(lcUrl, "%s: password [%d] %s", Q_FUNC_INFO, reply->error(),
               qPrintable(withoutCredentials(reply->errorString())));
    emit downloadFinished(tr("Download error: Authentication failed"));
    end(Error::Authentication);
}

void UrlFileModule::fsm_ProxyAuthenticate(const QNetworkProxy &proxy, QAuthenticator *authenticator)
{
    if (m_state != State::Started)
        return;
    Diagnostics::print(QStringLiteral("Proxy authenticator"));
    qCDebug(lcUrlCredentials) << proxy.user() << proxy.password();
    authenticator->setUser(proxy.user());
    authenticator->setPassword(proxy.password());
}

void UrlFileModule::fsm_Finished(QNetworkReply *reply)
{
    qCDebug(lcUrl) << withoutCredentials(reply->errorString());
}

/// A reply without an error may still be an error page, or incomplete.
bool UrlFileModule::isComplete() const
{
    const qint64 size = m_file->size();
    const bool complete = size > 0 && (m_total <= 0 || m_total == size) && hasImageStatus();
    if (!complete)
        qCCritical(lcUrl) << "not a complete file: status"
                          << m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() << size
                          << "of" << m_total << "bytes";
    return complete;
}

void UrlFileModule::fsm_TransferFinished()
{
    // In Started no data has arrived: the reply is an error or an empty file.
    if (m_state != State::Started && m_state != State::Receiving)
        return;
    m_abortTimer.stop();
    m_progressTimer.stop();
    const Error error = copyToFile();
    if (error != Error::None)
        end(error);
    else if (!isComplete())
        failTransfer();
    else if (!FirmwareImage::place(*m_file))
        end(Error::LocalFile);
    else {
        emit downloadFinished(QString());
        end(Error::None);
    }
}

void UrlFileModule::fsm_abort()
{
    if (m_state != State::Started && m_state != State::Receiving)
        return;
    qCWarning(lcUrl) << "no data for" << m_abortTimer.interval() << "ms";
    failTransfer();
}

void UrlFileModule::fsm_CleanUp()
{
    if (m_state != State::CleanUp)
        return;
    if (m_reply) {
        m_reply->disconnect(this);
        m_reply->abort();
        m_reply->close();
        m_reply->deleteLater();
        m_reply = nullptr;
    }
    if (m_manager) {
        m_manager->disconnect(this);
        m_manager->deleteLater();
        m_manager = nullptr;
    }
    m_file.reset();
    m_abortTimer.stop();
    m_progressTimer.stop();
    m_state = State::Idle;
    if (m_error == Error::LocalFile)
        emit ready_TransferDone(nullptr);
}

void UrlFileModule::startTool(const QNetworkProxy &proxy)
{
    m_file.reset();
    if (!m_tool.start(m_url, proxy)) {
        end(Error::LocalFile);
        return;
    }
    emit updateProxyFtp();
    emit ask_DownloadProgress(shownUrl(), 0, 100);
}
