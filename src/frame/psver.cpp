// The two constant version records. They differ only in the name, whose "+"
// tells that the processor has the feature of mask 0x80 (AVX).
#include "zvpcore.h"
#include "p8/frame.h"

namespace {

constexpr char kVersionText[] = "8.2.1 (r44077)";
constexpr char kBuildDate[] = "Oct  9 2014";

constexpr ZvpLibraryVersion kVersion = {
    8, 2, 1, 44077, {'p', '8', '\0', '\0'},
    "zvpSP SSE4.1/4.2 (p8)", kVersionText, kBuildDate};

constexpr ZvpLibraryVersion kVersionPlus = {
    8, 2, 1, 44077, {'p', '8', '\0', '\0'},
    "zvpSP SSE4.1/4.2 (p8)+", kVersionText, kBuildDate};

}  // namespace

namespace zvp::p8 {

const ZvpLibraryVersion* zvpsGetLibVersion() {
    return ownGetFeature(0x80) ? &kVersionPlus : &kVersion;
}

}  // namespace zvp::p8
