#include "VexmoraSDK/platform/common/TransferLoop.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

#include "VexmoraSDK/platform/Fatal.h"
#include "VexmoraSDK/platform/common/UrlSessionLimits.h"
#include "VexmoraSDK/platform/common/WorkerThread.h"

namespace VexmoraSDK::platform {
namespace {

/// Polling sleeps until a transfer, a limit or `start` wants it; this is only how long at most.
constexpr int kLongestPoll = 60 * 60 * 1000;

template <class Handle>
Handle* require(Handle* handle) {
    if (!handle) fatalError("out of memory");
    return handle;
}

}  // namespace

/// A transfer while libcurl works on it.
struct TransferLoop::Exchange {
    explicit Exchange(std::shared_ptr<Transfer> work)
        : transfer(std::move(work)), easy(curl_easy_init()) {}
    ~Exchange() { curl_easy_cleanup(easy); }
    Exchange(const Exchange&) = delete;
    Exchange& operator=(const Exchange&) = delete;

    void configure(CURLSH* cookies) {
        const auto set = [this](CURLoption option, auto value) {
            curl_easy_setopt(easy, option, value);
        };
        set(CURLOPT_PRIVATE, this);
        set(CURLOPT_URL, transfer->url.text().c_str());
        set(CURLOPT_PATH_AS_IS, 1L);
        set(CURLOPT_PROTOCOLS_STR, "http,https");
        set(CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
        set(CURLOPT_FOLLOWLOCATION, 1L);
        set(CURLOPT_MAXREDIRS, limits.redirects);
        set(CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_2TLS));
        set(CURLOPT_ACCEPT_ENCODING, "");
        set(CURLOPT_PROXY, "");
        set(CURLOPT_SHARE, cookies);
        set(CURLOPT_COOKIEFILE, "");
        set(CURLOPT_NOSIGNAL, 1L);
        set(CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(limits.connecting.count()));
        set(CURLOPT_LOW_SPEED_LIMIT, 1L);
        set(CURLOPT_LOW_SPEED_TIME, static_cast<long>(limits.silence.count()));
        set(CURLOPT_TIMEOUT_MS, static_cast<long>(limits.total.count()));
        set(CURLOPT_ERRORBUFFER, errorText.data());
        set(CURLOPT_WRITEFUNCTION, &Exchange::receive);
        set(CURLOPT_WRITEDATA, this);
    }

    static std::size_t receive(const char* bytes, std::size_t, std::size_t count, void* exchange) {
        return static_cast<Exchange*>(exchange)->append(bytes, count);
    }

    /// A count other than the given one makes libcurl end the transfer with an error.
    std::size_t append(const char* bytes, std::size_t count) {
        Data& body = transfer->body;
        if (count > limits.body - body.size()) return 0;
        if (body.empty()) reserveAnnounced();
        const auto* begin = reinterpret_cast<const std::byte*>(bytes);
        body.insert(body.end(), begin, begin + count);
        return count;
    }

    void reserveAnnounced() {
        curl_off_t announced = 0;
        curl_easy_getinfo(easy, CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &announced);
        if (announced > 0) {
            transfer->body.reserve(std::min(static_cast<std::size_t>(announced), limits.body));
        }
    }

    void finish(CURLcode result) {
        if (result != CURLE_OK) {
            const bool told = errorText.front() != '\0';
            transfer->fail(result, told ? errorText.data() : curl_easy_strerror(result));
        } else {
            curl_easy_getinfo(easy, CURLINFO_RESPONSE_CODE, &transfer->response.statusCode);
        }
    }

    const std::shared_ptr<Transfer> transfer;
    const UrlSessionLimits limits = UrlSessionLimits::shared();
    CURL* const easy;
    std::array<char, CURL_ERROR_SIZE> errorText{};
};

TransferLoop::TransferLoop(Sink finished)
    : finished_(std::move(finished)),
      multi_(require(curl_multi_init())),
      cookies_(require(curl_share_init())) {
    curl_share_setopt(cookies_, CURLSHOPT_SHARE, CURL_LOCK_DATA_COOKIE);
}

void TransferLoop::start(std::shared_ptr<Transfer> transfer) {
    const std::lock_guard lock(mutex_);
    if (stopped_) return;
    waiting_.push_back(std::move(transfer));
    if (!thread_.joinable()) {
        thread_ = startWorkerThread("vexmora-io", [this] { run(); });
    } else if (waiting_.size() == 1) {
        curl_multi_wakeup(multi_);
    }
}

void TransferLoop::stop() {
    {
        const std::lock_guard lock(mutex_);
        stopped_ = true;
    }
    curl_multi_wakeup(multi_);
    finishWorkerThread(thread_);
}

void TransferLoop::run() {
    while (true) {
        {
            const std::lock_guard lock(mutex_);
            if (stopped_) return;
        }
        takeWaiting();
        int running = 0;
        curl_multi_perform(multi_, &running);
        finishDone();
        if (curl_multi_poll(multi_, nullptr, 0, kLongestPoll, nullptr) != CURLM_OK) {
            // Lack of memory, say: not to be met with a busy loop.
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
    }
}

void TransferLoop::takeWaiting() {
    std::vector<std::shared_ptr<Transfer>> waiting;
    {
        const std::lock_guard lock(mutex_);
        waiting.swap(waiting_);
    }
    for (auto& transfer : waiting)
        begin(std::move(transfer));
}

void TransferLoop::begin(std::shared_ptr<Transfer> transfer) {
    auto exchange = std::make_unique<Exchange>(std::move(transfer));
    if (exchange->easy) {
        exchange->configure(cookies_);
        if (curl_multi_add_handle(multi_, exchange->easy) == CURLM_OK) {
            // From here on libcurl's handle leads to it.
            exchange.release();
            return;
        }
    }
    exchange->finish(CURLE_OUT_OF_MEMORY);
    finished_(exchange->transfer);
}

void TransferLoop::finishDone() {
    int left = 0;
    while (const CURLMsg* message = curl_multi_info_read(multi_, &left)) {
        if (message->msg != CURLMSG_DONE) continue;
        const CURLcode result = message->data.result;
        CURL* easy = message->easy_handle;
        void* found = nullptr;
        curl_easy_getinfo(easy, CURLINFO_PRIVATE, &found);
        const std::unique_ptr<Exchange> exchange(static_cast<Exchange*>(found));
        curl_multi_remove_handle(multi_, easy);
        exchange->finish(result);
        finished_(exchange->transfer);
    }
}

}  // namespace VexmoraSDK::platform
