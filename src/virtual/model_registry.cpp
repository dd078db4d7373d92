#include <algorithm>

#include "virtual/pad_model.h"

namespace velatrix::virtual_pad {

bool PadModel::declares_input(uint8_t id) const {
    return std::find(input_reports.begin(), input_reports.end(), id) != input_reports.end();
}

bool PadModel::declares_feature(uint8_t id) const {
    return std::find(feature_reports.begin(), feature_reports.end(), id) != feature_reports.end();
}

const std::vector<const PadModel*>& all_models() {
    static const std::vector<const PadModel*> models = {&mono_320_model(), &color_800_model()};
    return models;
}

const PadModel* find_model(const std::string& name) {
    for (const PadModel* model : all_models()) {
        if (model->name == name) return model;
    }
    return nullptr;
}

}  // namespace velatrix::virtual_pad
