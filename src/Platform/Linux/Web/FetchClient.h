// Asks web servers through a small program that ends with its answer.
//
// An HTTP library with its encryption takes several megabytes that never leave a process again, and the bar asks once a
// day. So it is not the bar that loads it; and whatever a server answers is taken apart outside the bar.
#pragma once

#include <filesystem>
#include <list>
#include <memory>

#include "Platform/HttpClient.h"

namespace morvel::x11 {

class FetchClient : public HttpClient {
public:
    /// The program's file name.
    static constexpr const char* kProgram = "morvel-fetch";

    /// The main loop outlives the client. `program` may be missing; then there are no answers.
    FetchClient(MainLoop& mainLoop, std::filesystem::path program);
    /// Ends the programs that still run.
    ~FetchClient() override;

    void get(const std::string& address, Duration timeout, std::function<void(HttpAnswer)> answered) override;

private:
    class Request;

    void finish(Request& request, const HttpAnswer& answer);

    MainLoop& mainLoop_;
    std::filesystem::path program_;
    std::list<std::unique_ptr<Request>> requests_;  // that have not been answered
};

}  // namespace morvel::x11
