#include "platform/linux/network/HTTPErrors.h"

namespace vistrel {

host::TransferError transferErrorOf(CURLcode result, const std::string& detail) {
    using Kind = host::TransferErrorKind;
    switch (result) {
    case CURLE_COULDNT_RESOLVE_HOST:
        return {Kind::CannotConnect, "A server with this name could not be found."};
    case CURLE_COULDNT_RESOLVE_PROXY:
    case CURLE_PROXY:
        return {Kind::CannotConnect, "Could not connect to the proxy server."};
    case CURLE_COULDNT_CONNECT:
        return {Kind::CannotConnect, "Could not connect to the server."};
    case CURLE_OPERATION_TIMEDOUT:
        return {Kind::TimedOut, "The request timed out."};
    case CURLE_PEER_FAILED_VERIFICATION:
        return {Kind::Security, "The certificate of this server is not valid, so it may not be the "
                                "server that it claims to be."};
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_CIPHER:
        return {Kind::Security, "A secure connection to the server could not be made."};
    case CURLE_PARTIAL_FILE:
    case CURLE_GOT_NOTHING:
    case CURLE_SEND_ERROR:
    case CURLE_RECV_ERROR:
    case CURLE_HTTP2:
    case CURLE_HTTP2_STREAM:
        return {Kind::ConnectionLost, "The network connection was lost."};
    case CURLE_UNSUPPORTED_PROTOCOL:
    case CURLE_WEIRD_SERVER_REPLY:
        return {Kind::Other, "The remote host is not a web server."};
    case CURLE_URL_MALFORMAT:
        return {Kind::BadURL, "bad URL"};
    default:
        return {Kind::Other, detail.empty() ? curl_easy_strerror(result) : detail};
    }
}

}
