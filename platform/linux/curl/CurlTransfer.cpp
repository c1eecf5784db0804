#include "platform/linux/curl/CurlTransfer.h"

#include "platform/linux/curl/CurlLoop.h"

#include <utility>

namespace vistrel {

CurlTransfer::CurlTransfer(std::shared_ptr<CurlLoop> loop)
    : loop_(std::move(loop))
    , handle_(curl_easy_init()) {
    reset();
}

CurlTransfer::~CurlTransfer() {
    stop();
    curl_easy_cleanup(handle_);
}

void CurlTransfer::reset() {
    curl_easy_reset(handle_);
    curl_easy_setopt(handle_, CURLOPT_PRIVATE, this);
    curl_easy_setopt(handle_, CURLOPT_ERRORBUFFER, error_.data());
    curl_easy_setopt(handle_, CURLOPT_NOSIGNAL, 1L);
    // Cancelling does not wait for the thread that looks up a host's address.
    curl_easy_setopt(handle_, CURLOPT_QUICK_EXIT, 1L);
}

void CurlTransfer::start() {
    error_[0] = '\0';
    running_ = true;
    loop_->add(handle_);
}

void CurlTransfer::stop() {
    if (std::exchange(running_, false))
        loop_->remove(handle_);
}

void CurlTransfer::wake() {
    if (!std::exchange(awake_, true))
        loop_->wake(weak_from_this());
}

}
