#pragma once
#include <curl/curl.h>

#include <array>
#include <memory>
#include <string>

namespace vistrel {
class CurlLoop;

/// One transfer of libcurl. A subclass sets its options on handle(); their functions are called
/// from inside the library and only take or give bytes, and wake() brings what follows from them
/// out of it. A subclass calls stop() in its destructor, before what its functions use is gone.
class CurlTransfer : public std::enable_shared_from_this<CurlTransfer> {
public:
    virtual ~CurlTransfer();
    CurlTransfer(const CurlTransfer&) = delete;
    CurlTransfer& operator=(const CurlTransfer&) = delete;

protected:
    explicit CurlTransfer(std::shared_ptr<CurlLoop> loop);

    CURL* handle() const { return handle_; }
    /// Options are back at their defaults.
    void reset();
    void start();
    void stop();
    void wake();
    /// What the library says about a failure; may be empty.
    std::string errorText() const { return error_.data(); }

    /// Called after wake(), once the library has returned. May do anything.
    virtual void progressed() = 0;
    /// The transfer is over, and stopped.
    virtual void ended(CURLcode result) = 0;

private:
    friend class CurlLoop;

    std::shared_ptr<CurlLoop> loop_;
    CURL* handle_;
    bool running_ = false;
    bool awake_ = false;
    std::array<char, CURL_ERROR_SIZE> error_{};
};

}
