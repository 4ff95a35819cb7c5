// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "devicetools-firmware/proxydownload.h"

#include "devicetools/checks.h"
#include "devicetools/tool.h"
#include "devicetools-firmware/partfile.h"

#include <QUrl>

#include <arpa/inet.h>
#include <chrono>
#include <csignal>
#include <curl/curl.h>
#include <memory>

namespace {

constexpr long connectLimitSeconds = 20;
constexpr long silenceLimitSeconds = 20;
/// Ends what neither of the two above ends.
constexpr int totalSilenceSeconds = 29;
constexpr auto lineInterval = std::chrono::milliseconds(500);
constexpr int longestUrl = 4096;
constexpr int longestName = 255;
constexpr int highestPort = 65535;
constexpr curl_off_t kibi = 1024;

volatile std::sig_atomic_t isStopped = 0;

void stop(int)
{
    isStopped = 1;
}

bool isAddress(const QString &text)
{
    in6_addr address = {};
    return inet_pton(AF_INET6, text.toLatin1().constData(), &address) == 1;
}

/// What the library's callbacks work on.
struct Transfer
{
    PartFile &file;
    curl_off_t received = 0;
    std::chrono::steady_clock::time_point lastLine;
};

std::size_t store(char *bytes, std::size_t size, std::size_t count, void *context)
{
    auto *transfer = static_cast<Transfer *>(context);
    return transfer->file.append(bytes, size * count) ? size * count : 0;
}

int report(void *context, curl_off_t, curl_off_t received, curl_off_t, curl_off_t)
{
    auto *transfer = static_cast<Transfer *>(context);
    const auto now = std::chrono::steady_clock::now();
    if (received > transfer->received && now - transfer->lastLine >= lineInterval) {
        Tool::print(QStringLiteral("%1K .......... .......... ..........").arg(received / kibi, 8));
        Tool::limit(totalSilenceSeconds);
        transfer->received = received;
        transfer->lastLine = now;
    }
    return isStopped ? 1 : 0;
}

void describe(CURL *curl, const ProxyDownload &download, Transfer &transfer)
{
    curl_easy_setopt(curl, CURLOPT_URL, download.url.toUtf8().constData());
    curl_easy_setopt(curl, CURLOPT_PROTOCOLS_STR, "ftp");
    const bool isIpv6 = isAddress(download.proxyHost);
    const QString host = isIpv6 ? QStringLiteral("[%1]").arg(download.proxyHost) : download.proxyHost;
    curl_easy_setopt(curl, CURLOPT_PROXY, host.toUtf8().constData());
    curl_easy_setopt(curl, CURLOPT_PROXYPORT, static_cast<long>(download.proxyPort));
    curl_easy_setopt(curl, CURLOPT_PROXYTYPE, static_cast<long>(CURLPROXY_HTTP));
    curl_easy_setopt(curl, CURLOPT_NOPROXY, "");
    if (!download.proxyUser.isEmpty()) {
        curl_easy_setopt(curl, CURLOPT_PROXYAUTH, static_cast<long>(CURLAUTH_BASIC | CURLAUTH_DIGEST));
        curl_easy_setopt(curl, CURLOPT_PROXYUSERNAME, download.proxyUser.toUtf8().constData());
        curl_easy_setopt(curl, CURLOPT_PROXYPASSWORD, download.proxyPassword.toUtf8().constData());
    }
    curl_easy_setopt(curl, CURLOPT_FAILONERROR, 1L);
    curl_easy_setopt(curl, CURLOPT_NETRC, static_cast<long>(CURL_NETRC_IGNORED));
    curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT, connectLimitSeconds);
    curl_easy_setopt(curl, CURLOPT_LOW_SPEED_LIMIT, 1L);
    curl_easy_setopt(curl, CURLOPT_LOW_SPEED_TIME, silenceLimitSeconds);
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L); // the limit of the tool needs the alarm
    curl_easy_setopt(curl, CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(transfer.file.room()));
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, store);
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, &transfer);
    curl_easy_setopt(curl, CURLOPT_XFERINFOFUNCTION, report);
    curl_easy_setopt(curl, CURLOPT_XFERINFODATA, &transfer);
    curl_easy_setopt(curl, CURLOPT_NOPROGRESS, 0L);
}

} // namespace

std::optional<ProxyDownload> ProxyDownload::from(const QStringList &arguments, const QString &target)
{
    if (arguments.size() != 5)
        return std::nullopt;
    ProxyDownload download{arguments.at(0), arguments.at(1), 0, arguments.at(3), arguments.at(4), target};
    const QUrl url(download.url, QUrl::StrictMode);
    const auto port = Checks::number(arguments.at(2), 1, highestPort);
    const bool isHost = Checks::isHostName(download.proxyHost) || isAddress(download.proxyHost);
    const bool isUrl = Checks::isPlainText(download.url, longestUrl) && url.isValid()
        && url.scheme() == QLatin1String("ftp") && !url.host().isEmpty();
    if (!port || !isHost || !isUrl || !Checks::isPlainText(download.proxyUser, longestName)
        || !Checks::isPlainText(download.proxyPassword, longestName))
        return std::nullopt;
    download.proxyPort = *port;
    return download;
}

QString ProxyDownload::run() const
{
    struct sigaction action = {};
    action.sa_handler = stop;
    sigaction(SIGTERM, &action, nullptr);
    sigaction(SIGINT, &action, nullptr);

    PartFile file(target);
    if (!file.open())
        return file.problem();
    Transfer transfer{file, 0, {}};
    const std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> curl(curl_easy_init(), curl_easy_cleanup);
    if (!curl)
        return QStringLiteral("no memory");
    describe(curl.get(), *this, transfer);
    const CURLcode result = curl_easy_perform(curl.get());
    if (!file.problem().isEmpty())
        return file.problem();
    if (result != CURLE_OK)
        return QString::fromUtf8(curl_easy_strerror(result));
    return file.finish() ? QString() : file.problem();
}
