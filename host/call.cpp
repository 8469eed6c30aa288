#include "host/call.h"

namespace flumo::host {

namespace {

thread_local Call* current = nullptr;

}  // namespace

Call::Call(Host& the_host, Instance* the_instance, SuiteProvider* the_suites)
    : host(the_host), instance(the_instance), suites(the_suites), counted(current == nullptr) {}

Call* current_call() {
    return current;
}

CurrentCall::CurrentCall(Call& call) : outer_(current) {
    current = &call;
}

CurrentCall::~CurrentCall() {
    current = outer_;
}

}  // namespace flumo::host
