#include "demo/Pages.h"

namespace vistrel::demo {
namespace {
// What the library runs in a hidden page to get an ad's address. The unit, or "ad" in the
// request's extras, names the ad; some names are answers of the script itself.
constexpr std::string_view script = R"(function AFMA_buildAdURL(parameters) {
  function flat(fields) {
    return Object.keys(fields).map(function (key) {
      var value = fields[key];
      return encodeURIComponent(key) + '=' +
          encodeURIComponent(typeof value === 'object' ? JSON.stringify(value) : value);
    }).join('&');
  }
  function answer(name, fields) {
    window.location = 'gmsg://ads/' + name + '?' + flat(fields);
  }
  var extras = parameters.extras || {};
  var name = extras.ad || parameters.slotname || '';
  if (name === 'never')
    return;
  if (name === 'invalid-request')
    return answer('invalidRequest', {reason: 'The unit asks to be refused'});
  if (name === 'unable-to-serve')
    return answer('unableToServe', {reason: 'The unit asks for nothing'});
  if (name === 'errors')
    return answer('loadAdURL', {errors: 'The unit asks for errors'});
  if (extras.url)
    return answer('loadAdURL', {url: extras.url, type: 'grokruf'});
  var asked = flat(parameters);
  answer('loadAdURL', {
    url: window.location.protocol + '//' + window.location.host + '/ads/serve?ad=' +
        encodeURIComponent(name) + '&kind=KIND&' + asked,
    type: name === 'whirl' ? 'gwhirl' : 'grokruf'
  });
}
)";

// Older than any cached copy, so that a copy is always current.
constexpr std::string_view written = "Mon, 03 Jan 2011 09:00:00 GMT";

Answer scriptOfKind(std::string_view kind) {
    Answer answer;
    answer.type = "text/javascript; charset=utf-8";
    std::string text(script);
    constexpr std::string_view place = "KIND";
    text.replace(text.find(place), place.size(), kind);
    answer.body = Body(std::move(text));
    answer.headers = {{"Last-Modified", std::string(written)}};
    return answer;
}
}

Answer adScript(Site& /*site*/, const Request& /*request*/) {
    return scriptOfKind("banner");
}

Answer searchAdScript(Site& /*site*/, const Request& /*request*/) {
    return scriptOfKind("search");
}
}
