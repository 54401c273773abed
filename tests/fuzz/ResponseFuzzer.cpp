// SPDX-License-Identifier: MIT
// Parses bodies of ad responses and builds the models.
#include "VexmoraSDK/ads/AdFactory.h"
#include "tests/fake_platform/FakeUrlSession.h"
#include "tests/fuzz/Fuzzing.h"

namespace VexmoraSDK {
namespace {

template <class T>
void buildModels(const platform::Data& answer) {
    platform::FakeUrlSession::reset();
    int errors = 0;
    const auto ad = Utils::getAdFromJson<T>(answer, [&](const VexmoraError& error) {
        ++errors;
        check(error.code() == static_cast<std::intptr_t>(VexmoraErrorCodes::ParsingError),
              "another error than one of parsing");
    });
    check(errors == (ad ? 0 : 1), "not exactly one outcome");
    check(platform::FakeUrlSession::requests().size() == Utils::parseAdJson(answer).size(),
          "not one picture requested for each record");
}

template <class T>
void buildModelsOrStop(const platform::Data& answer) {
    try {
        buildModels<T>(answer);
    } catch (const FatalStop&) {
    }
}

}  // namespace
}  // namespace VexmoraSDK

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace VexmoraSDK;
    const auto answer = dataOf(bytes, size);
    buildModelsOrStop<Banner>(answer);
    buildModelsOrStop<Native>(answer);
    return 0;
}
