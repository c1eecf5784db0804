#pragma once
#include "demo/Misbehaviour.h"
#include "demo/Site.h"

#include <libsoup/soup.h>

namespace vistrel::demo {

/// Reads a request from the server's message.
Request requestFrom(SoupServerMessage* message);

/// One request being answered: waits if requested, finds the response, sends it. Owns itself
/// until the response is sent.
class Exchange {
public:
    static void start(SoupServerMessage* message, Request request, Site& site);

    Exchange(const Exchange&) = delete;
    Exchange& operator=(const Exchange&) = delete;

private:
    Exchange(SoupServerMessage* message, Request request, Site& site);
    ~Exchange();

    void answer();
    void answerOnThread();
    void deliver(Answer answer);
    void deliverWell(const Answer& answer);
    void deliverOnTheWire(const Answer& answer);
    static gboolean onDelayOver(gpointer self);
    static void onGone(SoupServerMessage* message, gpointer self);
    static void computeOnThread(GTask* task, gpointer source, gpointer self, GCancellable* stop);
    static void onComputed(GObject* source, GAsyncResult* result, gpointer self);

    SoupServerMessage* message_;
    Request request_;
    Site& site_;
    Misbehaviour misbehaviour_;
    Answer computed_; ///< set by the thread of a slow page
    unsigned delayTimer_ = 0;
    gulong goneHandler_ = 0;
    bool gone_ = false;
    bool onThread_ = false;
};
}
