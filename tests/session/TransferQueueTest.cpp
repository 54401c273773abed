// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/http/TransferQueue.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace VexmoraSDK::platform {
namespace {

class TransferQueueTest : public testing::Test {
 protected:
    void push(const std::string& address, TaskPriority priority = TaskPriority::normal,
              int times = 1) {
        for (int i = 0; i < times; ++i) {
            queue.push(std::make_shared<Fetch>(Url::fromString(address).value(), nullptr, cache,
                                               limits, priority));
        }
    }

    std::vector<std::string> popAll() {
        std::vector<std::string> popped;
        while (queue.isReady()) {
            begun.push_back(queue.pop());
            popped.push_back(begun.back()->url.text());
        }
        return popped;
    }

    UrlSessionLimits limits;
    HttpCache cache{limits};
    TransferQueue queue{limits};
    std::vector<std::shared_ptr<Fetch>> begun;
};

using Addresses = std::vector<std::string>;

TEST_F(TransferQueueTest, LetsOriginsTakeTurnsAndPicturesWait) {
    push("http://a/picture", TaskPriority::low);
    push("http://a/1");
    push("http://a/2");
    push("http://b/picture", TaskPriority::low);
    push("http://b/1");
    EXPECT_EQ(popAll(), (Addresses{"http://a/1", "http://b/1", "http://a/2", "http://a/picture",
                                   "http://b/picture"}));
}

TEST_F(TransferQueueTest, GivesAnOriginHalfOfThePlacesHoweverItsUrlsAreWritten) {
    for (const auto* same : {"http://a/", "HTTP://A:80/x?y", "http://a:080/", "http://user@a:#x"})
        push(same, TaskPriority::normal, 10);
    EXPECT_EQ(popAll().size(), 32u);
    for (const auto* other : {"https://a/", "http://a:81/", "http://user@a:443#x"})
        push(other);
    EXPECT_EQ(popAll().size(), 3u);
    queue.release(*begun.front());
    EXPECT_EQ(popAll().size(), 1u);
    EXPECT_FALSE(queue.isReady());
}

TEST_F(TransferQueueTest, KeepsPlacesForAdsThatPicturesCannotTake) {
    push("http://a/picture", TaskPriority::low, 40);
    EXPECT_EQ(popAll().size(), 28u);
    push("http://a/", TaskPriority::normal, 40);
    EXPECT_EQ(popAll(), Addresses(4, "http://a/"));
    push("http://b/picture", TaskPriority::low, 40);
    EXPECT_EQ(popAll().size(), 24u) << "of 56 in all";
    push("http://c/", TaskPriority::normal, 40);
    EXPECT_EQ(popAll().size(), 8u);
    for (const auto& fetch : begun)
        queue.release(*fetch);
    begun.clear();
    EXPECT_EQ(popAll().size(), 64u);
}

TEST_F(TransferQueueTest, LetsBodiesHoldBackOnlyTheirOwnPriority) {
    push("http://a/picture", TaskPriority::low);
    push("http://b/picture", TaskPriority::low);
    popAll();
    const std::size_t half = limits.maxHeldBodyBytes / 2;
    queue.hold(*begun[0], 3 * half);
    push("http://a/picture", TaskPriority::low);
    push("http://c/picture", TaskPriority::low);
    EXPECT_EQ(popAll(), Addresses{"http://c/picture"}) << "one origin's count for half at most";
    queue.hold(*begun[1], half - 1);
    push("http://d/picture", TaskPriority::low);
    EXPECT_EQ(popAll(), Addresses{"http://d/picture"});
    queue.hold(*begun[1], half);
    push("http://e/picture", TaskPriority::low);
    push("http://a/");
    EXPECT_EQ(popAll(), Addresses{"http://a/"});
    queue.release(*begun[1]);
    EXPECT_EQ(popAll(), Addresses{"http://e/picture"});
    queue.hold(*begun[0], half - 1);
    EXPECT_EQ(popAll(), Addresses{"http://a/picture"});
    EXPECT_EQ(queue.heldBytes()[TaskPriority::low], half - 1);
}

}  // namespace
}  // namespace VexmoraSDK::platform
