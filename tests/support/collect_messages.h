#pragma once
// A message sink that keeps every model message, for tests to inspect.
#include <vector>
#include "core/messages.h"

namespace osm::test {

class CollectMessages : public MessageSink {
public:
    std::vector<ModelMessage> seen;
    void Show(const ModelMessage& msg) override { seen.push_back(msg); }
};

}  // namespace osm::test
