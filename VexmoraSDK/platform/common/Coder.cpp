#include "VexmoraSDK/platform/Coder.h"

#include "VexmoraSDK/platform/PropertyList.h"

namespace VexmoraSDK::platform {

std::optional<Coder> Coder::fromData(const Data& data) {
    auto values = PropertyList::dictionary(data);
    if (!values) return std::nullopt;
    return Coder(std::move(*values));
}

void Coder::encode(std::string key, Value value) {
    values_.insert_or_assign(std::move(key), std::move(value));
}

Data Coder::data() const {
    return PropertyList::xml(values_);
}

}  // namespace VexmoraSDK::platform
