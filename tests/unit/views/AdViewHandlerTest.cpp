// SPDX-License-Identifier: MIT
#include "VexmoraSDK/views/AdViewHandler.h"

#include "VexmoraSDK/platform/Application.h"
#include "VexmoraSDK/views/VexmoraBannerView.h"
#include "tests/fake_platform/FakeApplication.h"
#include "tests/unit/FatalReports.h"
#include "tests/unit/views/AdViewTest.h"

namespace VexmoraSDK {
namespace {

using platform::Font;
using platform::Rect;
using testing::ElementsAre;

class AdViewHandlerTest : public AdViewTest {
 protected:
    /// The request address of a view with this identifier and these types.
    std::string addressOf(const std::string& containerId, std::vector<std::intptr_t> adTypes) {
        view_->setAdTypes(std::move(adTypes));
        view_->setContainerId(containerId);
        return handler().getUrl(*view_).text();
    }

    /// What a template makes of the identifier "home" and the types 15 and 14.
    std::string filled(std::string format) {
        handler().setRequestUrlFormat(std::move(format));
        return addressOf("home", {15, 14});
    }

    AdViewHandler& handler() { return *view_->vexmoraDelegate(); }

    const std::shared_ptr<VexmoraBannerView> view_ = VexmoraBannerView::create();
};

TEST_F(AdViewHandlerTest, FillsTheTemplateWithTheIdentifierAndTheTypesAsTheyAre) {
    EXPECT_EQ(addressOf("123-4", {15, 14}), "https://ads.test/?container=123-4&types=15,14");
    EXPECT_EQ(addressOf("a%41&b=", {77, 77, -1}),
              "https://ads.test/?container=a%41&b=&types=77,77,-1");
    EXPECT_EQ(addressOf("", {}), "https://ads.test/?container=&types=");
}

TEST_F(AdViewHandlerTest, FormatsObjectsAndPercentSignsAndKeepsAllElse) {
    EXPECT_EQ(filled("https://a.test/%@/%@/"), "https://a.test/home/15,14/");
    EXPECT_EQ(filled("https://a.test/%2$@/%1$@/"), "https://a.test/15,14/home/");
    EXPECT_EQ(filled("https://a.test/%%41/%@?t=%@"), "https://a.test/%41/home?t=15,14");
    EXPECT_EQ(filled("https://a.test/%41%d0/%@?t=%@"), "https://a.test/%41%d0/home?t=15,14");
}

TEST_F(AdViewHandlerTest, OpensOnlyAddressesOfAllowedSchemesAndTellsTheHostOfEveryTap) {
    int opened = 0;
    int told = 0;
    platform::FakeApplication::setOpener([&](const platform::Url&) { ++opened; });
    auto delegate = std::make_shared<VexmoraDelegate>();
    delegate->willLeaveApplication = [&](VexmoraView&) { ++told; };
    view_->setDelegate(delegate);
    const auto opens = [&](std::string_view address) {
        told = opened = 0;
        handler().handleTap(*view_, platform::Url::fromString(address).value());
        EXPECT_EQ(told, 1) << address;
        return opened == 1;
    };
    for (const auto* address : {"HTTPS://shop.test", "http://shop.test", "mailto:a@b.test", "tel:1",
                                "sms:1", "geo:1,2", "market://details"}) {
        EXPECT_TRUE(opens(address)) << address;
    }
    for (const auto* address :
         {"smb://host/share", "ssh://host", "sftp://host", "view-source:file:///etc", "jar:file:/a",
          "search-ms:query", "apt:package", "file:///etc/passwd", "javascript:alert(1)", "data:,a",
          "/etc/passwd", "//host/share", "?query", "intent:a", "myapp:cart"}) {
        EXPECT_FALSE(opens(address)) << address;
    }
    platform::Application::allowScheme("MyApp");
    platform::Application::allowScheme("smb://host");
    EXPECT_TRUE(opens("myapp:cart"));
    EXPECT_FALSE(opens("smb://host/share")) << "that was no scheme";
}

TEST_F(AdViewHandlerTest, AddsATextInItsFontButNotInItsColour) {
    const Rect frame{{135, 0}, {188, 20}};
    const auto text =
        handler().addTextView(*view_, frame, {"Helvetica", 12, platform::Color::gray()}, "Shop");
    EXPECT_EQ(text->frame(), frame);
    EXPECT_EQ(text->text(), "Shop");
    EXPECT_EQ(text->font(), Font::named("Helvetica", 12));
    EXPECT_EQ(text->textColor(), platform::Color::black());
    EXPECT_FALSE(text->isEditable());

    const auto plain = handler().addTextView(*view_, frame, {"Unknown", 12, {}}, std::nullopt);
    EXPECT_EQ(plain->text(), std::nullopt);
    EXPECT_EQ(plain->font(), std::nullopt);
    EXPECT_THAT(view_->subviews(), ElementsAre(text, plain));
}

using AdViewHandlerDeathTest = AdViewHandlerTest;

TEST_F(AdViewHandlerDeathTest, StopsAtAnIdentifierThatMakesNoAddress) {
    for (const auto& id : std::vector<std::optional<std::string>>{"two words", "100%", {}})
        EXPECT_DEATH(view_->setContainerId(id), kFoundNil) << id.value_or("absent");
    EXPECT_DEATH(filled("https://a.test/%@%@%@"), kFoundNil);
}

}  // namespace
}  // namespace VexmoraSDK
