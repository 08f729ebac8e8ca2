#pragma once
// Model messages: the fixed texts the model shows the user. The desktop program
// shows a modal box that holds the run until answered; the batch runner writes a
// line to stderr, goes on, and counts each kind.
#include <string>

namespace osm {

struct ModelMessage {
    std::string kind;   // short key for counting, e.g. "sand balance"
    std::string text;
    std::string title;
    std::string detail;  // why, when known; shown below the fixed text
};

class MessageSink {
public:
    virtual ~MessageSink() = default;
    virtual void Show(const ModelMessage& message) = 0;
};

}  // namespace osm
