// A place on this machine alone where a test's own server listens.
#pragma once

#include <arpa/inet.h>
#include <sys/socket.h>

namespace morvel {

/// Lets the stream socket listen at a free port of the loopback interface, which is the answer.
inline int listenOnLoopback(int socket) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    ::bind(socket, reinterpret_cast<sockaddr*>(&address), size);
    ::listen(socket, 8);
    ::getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size);
    return ntohs(address.sin_port);
}

}  // namespace morvel
