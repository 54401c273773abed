// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "VexmoraSDK/platform/foundation/Bundle.h"
#include "VexmoraSDK/platform/foundation/Coder.h"
#include "VexmoraSDK/platform/ui/View.h"

namespace VexmoraSDK::platform {

/// An interface file: a property list of views, as `views/NAME.nib` in a bundle.
///
/// The classes are `View`, `TextView`, `Button` and those of the caller. The file's "objects" are
/// the top-level views. Each view is a dictionary of "class" and of what that class decodes (see
/// the classes' coder initialisers), and may have
/// - "id", a name within the file,
/// - "subviews", an array of views,
/// - "outlets", a dictionary from the view's outlet names to ids,
/// - "actions", an array of dictionaries: a tap on the view with the id "view" sends "selector" to
///   this view.
class Nib {
 public:
    /// Makes a view of one class from its description.
    using Creator = std::function<std::shared_ptr<View>(const Coder& coder)>;
    using Creators = std::map<std::string, Creator, std::less<>>;

    /// Reads the file of that name. A missing or unreadable file is a fatal stop.
    Nib(std::string_view name, const Bundle& bundle);

    /// Makes the top-level views and all below them. `creators` knows the classes that are not the
    /// platform's. A class, an id or an outlet that is unknown is a fatal stop. Main thread.
    std::vector<std::shared_ptr<View>> instantiate(const Creators& creators) const;

 private:
    /// A view of the file.
    struct Description {
        explicit Description(const Value& view);

        Coder coder;
        std::list<Description> subviews;
    };
    class Loader;

    static std::list<Description> descriptionsIn(const Coder& coder, std::string_view key);

    std::string name_;
    std::list<Description> objects_;
};

}  // namespace VexmoraSDK::platform
