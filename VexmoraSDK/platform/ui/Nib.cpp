// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/ui/Nib.h"

#include <utility>

#include "VexmoraSDK/platform/foundation/Fatal.h"
#include "VexmoraSDK/platform/foundation/PropertyList.h"
#include "VexmoraSDK/platform/ui/Button.h"
#include "VexmoraSDK/platform/ui/TapGestureRecognizer.h"
#include "VexmoraSDK/platform/ui/TextView.h"

namespace VexmoraSDK::platform {
namespace {

Coder contentsOf(std::string_view name, const Bundle& bundle) {
    const std::string folder = bundle.folder() / "views";
    const FatalContext context("folder", folder);
    std::optional<Dictionary> contents;
    if (const auto file = bundle.pathForResource("views/" + std::string(name), "nib")) {
        contents = PropertyList::dictionaryWithContentsOfFile(*file);
    }
    if (!contents) fatalError("could not load the interface file '" + std::string(name) + "'");
    return Coder(std::move(*contents));
}

Coder coderOf(const Value& dictionary) {
    return Coder(unwrap(dictionary.as<Dictionary>()));
}

}  // namespace

Nib::Description::Description(const Value& view)
    : coder(coderOf(view)), subviews(descriptionsIn(coder, "subviews")) {}

std::list<Nib::Description> Nib::descriptionsIn(const Coder& coder, std::string_view key) {
    std::list<Description> descriptions;
    if (const auto* found = coder.decode<Array>(key)) {
        for (const Value& view : *found)
            descriptions.emplace_back(view);
    }
    return descriptions;
}

/// Makes the views of one file: first all of them, then what connects them.
class Nib::Loader {
 public:
    explicit Loader(const Creators& creators) : creators_(creators) {}

    std::vector<std::shared_ptr<View>> views(const std::list<Description>& descriptions) {
        std::vector<std::shared_ptr<View>> views;
        for (const auto& description : descriptions)
            views.push_back(viewFrom(description));
        return views;
    }

    void connect() const {
        for (const auto& [view, description] : made_) {
            if (const auto* outlets = description->coder.decode<Dictionary>("outlets")) {
                for (const auto& [outlet, id] : *outlets) {
                    view->setOutlet(outlet, named(unwrap(id.as<std::string>())));
                }
            }
            if (const auto* actions = description->coder.decode<Array>("actions")) {
                for (const Value& action : *actions)
                    addAction(coderOf(action), view);
            }
        }
    }

 private:
    std::shared_ptr<View> viewFrom(const Description& description) {
        const Coder& coder = description.coder;
        auto view = create(unwrap(coder.decode<std::string>("class")), coder);
        if (const auto* id = coder.decode<std::string>("id")) byId_[*id] = view;
        for (const auto& subview : views(description.subviews))
            view->addSubview(subview);
        made_.emplace_back(view, &description);
        return view;
    }

    std::shared_ptr<View> create(const std::string& className, const Coder& coder) const {
        if (const auto found = creators_.find(className); found != creators_.end()) {
            return found->second(coder);
        }
        if (className == View::kClassName) return makeSharedOnMain<View>(coder);
        if (className == Button::kClassName) return makeSharedOnMain<Button>(coder);
        if (className == TextView::kClassName) return makeSharedOnMain<TextView>(coder);
        fatalError("an interface file names the unknown class '" + className + "'");
    }

    void addAction(const Coder& action, const std::shared_ptr<View>& target) const {
        const auto& tapped = named(unwrap(action.decode<std::string>("view")));
        tapped->addGestureRecognizer(std::make_shared<TapGestureRecognizer>(
            target, unwrap(action.decode<std::string>("selector"))));
    }

    const std::shared_ptr<View>& named(const std::string& id) const {
        const auto found = byId_.find(id);
        return unwrap(found == byId_.end() ? nullptr : &found->second, "id", id);
    }

    const Creators& creators_;
    std::map<std::string, std::shared_ptr<View>> byId_;
    std::list<std::pair<std::shared_ptr<View>, const Description*>> made_;
};

Nib::Nib(std::string_view name, const Bundle& bundle) : name_(name) {
    const Coder file = contentsOf(name, bundle);
    const FatalContext context("interface file", name_);
    objects_ = descriptionsIn(file, "objects");
}

std::vector<std::shared_ptr<View>> Nib::instantiate(const Creators& creators) const {
    const FatalContext context("interface file", name_);
    Loader loader(creators);
    auto views = loader.views(objects_);
    loader.connect();
    return views;
}

}  // namespace VexmoraSDK::platform
