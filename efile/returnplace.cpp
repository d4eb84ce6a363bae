#include "efile/returnplace.h"

namespace {

PlaceOpener &opener()
{
    static PlaceOpener current;
    return current;
}

} // namespace

void SetPlaceOpener(PlaceOpener next)
{
    opener() = std::move(next);
}

const PlaceOpener &OpenerOfPlaces()
{
    return opener();
}
