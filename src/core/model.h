#pragma once
// The whole model: one struct per module, owned by one Model. There are no
// globals; a test builds a small Model, fills a few tables and calls a routine.
#include <string>

#include "core/main_module.h"
#include "core/messages.h"
#include "hydrology/physical_module.h"
#include "population/popsubs_module.h"
#include "presentation/graphs_module.h"
#include "presentation/vectormap_module.h"
#include "production/production_module.h"
#include "recreation/rec_module.h"
#include "sediment/morph_module.h"
#include "sediment/sediment_module.h"

namespace osm {

struct Model {
    Main main;
    Physical physical;
    Sediment sediment;
    Morph morph;
    Production production;
    Popsubs popsubs;
    Rec rec;
    Graphs graphs;
    VectorMap vectorMap;
    Legend legend;

    // Where model messages go; without a sink they go to stderr.
    MessageSink* messages = nullptr;

    Model();
};

// Shows a model message through the model's sink.
void ShowMessage(Model& m, const std::string& kind, const std::string& text,
                 const std::string& title = "", const std::string& detail = "");

// A path of the program folder: a relative name is taken inside the folder.
std::string InFolder(const Model& m, const std::string& name);

}  // namespace osm
