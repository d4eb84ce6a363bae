#include "calc/lines.h"

namespace {

enum Nature {
    Hotel = 1,
    Construction = 2,
    Pharmaceuticals = 3,
    Software = 4,
    MotorCarCarrier = 5,
    AircraftCarrier = 6
};

constexpr int firstDividedYear = 2007;

int lineOfHospitality(int year, int natId)
{
    if (natId == Hotel)
        return 5;
    return natId == AircraftCarrier && year >= firstDividedYear ? 24 : 4;
}

int lineOfTravelBefore2007(int natId)
{
    return natId == Construction || natId == Pharmaceuticals || natId == Software ? 10 : 9;
}

int lineOfTravel(int year, int natId)
{
    if (year < firstDividedYear)
        return lineOfTravelBefore2007(natId);
    switch (natId) {
    case Construction:
        return 26;
    case Pharmaceuticals:
        return 10;
    case Software:
        return 27;
    default:
        return 9;
    }
}

int lineOfLodging(int year, int natId, int shipNatId)
{
    if (natId == Pharmaceuticals)
        return 12;
    if (year < firstDividedYear)
        return natId == Software ? 12 : 11;
    if (natId == Software)
        return 28;
    if (natId == AircraftCarrier)
        return 29;
    return natId == shipNatId ? 30 : 11;
}

} // namespace

int ComputationLine(int headId, int year, int natId, int shipNatId)
{
    switch (headId) {
    case 2: // ticket
    case 3: // superannuation fund
    case 4: // entertainment
        return headId - 1;
    case 5:
        return lineOfHospitality(year, natId);
    case 6: // conference
    case 7: // sales promotion
    case 8: // employees welfare
        return headId;
    case 9:
        return lineOfTravel(year, natId);
    case 10:
        return lineOfLodging(year, natId, shipNatId);
    case 11: // motor car
        return natId == MotorCarCarrier ? 14 : 13;
    case 20: // tour and travel, a head of its own from 2007 on
        return year < firstDividedYear ? lineOfTravelBefore2007(natId) : 23;
    case 21: // sweat equity shares
        return 31;
    default: // aircraft, telephone, guest house, festivals, health club, club, gifts, scholarships
        return headId >= 12 && headId <= 19 ? headId + 3 : 0;
    }
}
