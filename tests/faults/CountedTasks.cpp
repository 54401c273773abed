#include "tests/faults/CountedTasks.h"

#include <atomic>
#include <memory>

#include "VexmoraSDK/platform/http/UrlSession.h"

namespace VexmoraSDK {
namespace {

using platform::Data;
using platform::Error;
using platform::Url;
using platform::UrlResponse;
using platform::UrlSession;
using platform::UrlSessionTask;

std::atomic<int> underWay = 0;
std::atomic<int> repeated = 0;

}  // namespace

// The linker has the library's calls of `UrlSession::dataTask` go through this. A member function
// takes its object before its arguments.
UrlSessionTask realDataTask(UrlSession* session, Url url,
                            UrlSession::Completion completion) asm(REAL);
UrlSessionTask countedDataTask(UrlSession* session, Url url,
                               UrlSession::Completion completion) asm(WRAPPED);

UrlSessionTask countedDataTask(UrlSession* session, Url url, UrlSession::Completion completion) {
    ++underWay;
    return realDataTask(session, std::move(url),
                        [completion = std::move(completion),
                         completed = std::make_shared<std::atomic<bool>>(false)](
                            std::optional<Data> body, std::optional<UrlResponse> response,
                            std::optional<Error> error) {
                            const bool again = completed->exchange(true);
                            completion(std::move(body), response, std::move(error));
                            if (again)
                                ++repeated;
                            else
                                --underWay;
                        });
}

bool CountedTasks::allAreThrough() {
    return underWay == 0;
}

int CountedTasks::completedTwice() {
    return repeated;
}

}  // namespace VexmoraSDK
