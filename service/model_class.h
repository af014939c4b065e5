#pragma once

#include <memory>
#include <optional>

#include "model/json.h"
#include "service/response_kind.h"

namespace fleetor {

/// An envelope of some class, mapped and tested; null when there is an error.
struct MappedEnvelope {
  std::shared_ptr<void> envelope;
  std::optional<APIFailure> error;
};

/// Maps a decoded answer (nil when there is none) into the envelope R and asks it whether it is valid. Any
/// thread. Instantiated for each class of service/envelopes.h.
template <class R>
MappedEnvelope mapEnvelope(JSONValue json);

/// The envelope class that a caller wants its answer mapped into.
template <class R>
struct ModelClass {
  MappedEnvelope (*map)(JSONValue json) = nullptr;
};

template <class R>
inline constexpr ModelClass<R> modelClass{&mapEnvelope<R>};

/// The answer is not mapped: the completion gets no record.
inline constexpr ModelClass<void> noModelClass{};

}  // namespace fleetor
