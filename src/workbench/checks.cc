#include "workbench/checks.h"

namespace workbench {

struct Checks::State {};

Checks::Checks(zarel::Program& /*program*/, const CheckOptions& /*options*/)
    : state_(std::make_unique<State>()) {}

Checks::~Checks() = default;

void Checks::report(const MessageSink& /*sink*/) {}

}    // namespace workbench
