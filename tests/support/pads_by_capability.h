// Virtual pad models picked by what a test needs of them: a test asks for
// capabilities and runs on every built-in model that has them all, never
// on a model named for it.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "virtual/pad_model.h"

namespace velatrix::test_pads {

enum Capability : unsigned {
    kAnyPad = 0,
    kScreensResources = 1u << 0,
    kCardReader = 1u << 1,
    kColour = 1u << 2,
};

inline unsigned capabilities(const virtual_pad::PadModel& model) {
    return (model.capabilities.supports_screens_resources ? kScreensResources : 0u) |
           (model.has_card_reader() ? kCardReader : 0u) | (model.display.color_depth > 1 ? kColour : 0u);
}

inline std::vector<const virtual_pad::PadModel*> models_with(unsigned needs) {
    std::vector<const virtual_pad::PadModel*> models;
    for (const virtual_pad::PadModel* model : virtual_pad::all_models()) {
        if ((capabilities(*model) & needs) == needs) models.push_back(model);
    }
    return models;
}

// The name of the first model with the capabilities, for tests that need one pad.
inline std::string first_model_with(unsigned needs = kAnyPad) { return models_with(needs).at(0)->name; }

// A model's name as a gtest parameter name, which may not hold '-'.
inline std::string test_name(const virtual_pad::PadModel& model) {
    std::string name = model.name;
    for (char& c : name) {
        if (c == '-') c = '_';
    }
    return name;
}

inline std::string model_name(const ::testing::TestParamInfo<const virtual_pad::PadModel*>& info) {
    return test_name(*info.param);
}

}  // namespace velatrix::test_pads
