#include "demo/town/fleet.h"

#include <cstdio>
#include <iterator>

#include "demo/town/random.h"

namespace fleetor::demo {
namespace {

constexpr const char* vehicleColours[] = {"#d7263d", "#1b998b", "#2e5eaa", "#f46036", "#6a4c93", "#2f7f33",
                                          "#c2185b", "#00798c", "#8d6e00", "#5d4037", "#3949ab", "#e08e00",
                                          "#7cb518", "#9c1de7", "#0f4c5c", "#ef476f"};
constexpr const char* firstNames[] = {"Ada",  "Bruno", "Clara", "Dario", "Edda", "Finn",   "Greta", "Hugo",
                                      "Ines", "Jonas", "Kaja",  "Leo",   "Mira", "Nils",   "Olga",  "Pavel",
                                      "Rosa", "Sven",  "Tilda", "Ugo",   "Vera", "Willem", "Yara",  "Zoë"};
constexpr const char* lastNames[] = {"Aldersey", "Brask",   "Colvin",  "Drost",  "Ekman",   "Farrow",
                                     "Gellert",  "Hollis",  "Ivarsen", "Jessop", "Kestner", "Lund",
                                     "Mercer",   "Norwood", "Ostrand", "Pell",   "Quist",   "Rademak",
                                     "Sorrell",  "Thorne",  "Umber",   "Voss",   "Wexley",  "Yarrow"};

// What the vehicles of each kind are called, in the order of vehicleKinds.
constexpr const char* kindNames[][3] = {
    {"Sales car", "Pool car", "Taxi"},           {"Delivery van", "Café van", "Parcel van"},
    {"Box truck", "Kühltruck", "Cold truck"},    {"City bus", "Shuttle bus", "Büssli"},
    {"Courier", "Messenger", "Patrol bike"},     {"Trailer", "Boat trailer", "Low loader"},
    {"Excavator", "Mini digger", "Wheel loader"}};

// The mix of a fleet, as indices into vehicleKinds; the first vehicles of the list are such that are nearly
// always out.
constexpr int fleetMix[] = {1, 0, 3, 4, 2, 1, 0, 5, 1, 6, 2, 0, 1, 3, 4};

FleetVehicle makeVehicle(std::uint64_t seed, std::int64_t id, int index) {
  FleetVehicle vehicle;
  vehicle.id = id;
  vehicle.seed = hashOf(seed, id);
  Random random(hashOf(vehicle.seed, 11));
  const int kind = fleetMix[static_cast<std::size_t>(index) % std::size(fleetMix)];
  vehicle.kind = &vehicleKinds[static_cast<std::size_t>(kind)];
  vehicle.name = std::string(random.oneOf(kindNames[kind])) + " " + std::to_string(index + 1);
  char plate[32];
  std::snprintf(plate, sizeof plate, "LH %c%c %04u", static_cast<char>('A' + random.below(26)),
                static_cast<char>('A' + random.below(26)), random.below(10000));
  // Machines and some trailers carry no plate.
  const bool plateless = kind == 6 || (kind == 5 && random.chance(0.5)) || random.chance(0.04);
  if (!plateless) vehicle.registration = plate;
  vehicle.colour = vehicleColours[static_cast<std::size_t>(index) % std::size(vehicleColours)];
  vehicle.driver = random.oneOf(firstNames);
  vehicle.driver.append(" ").append(random.oneOf(lastNames));
  char phone[32];
  std::snprintf(phone, sizeof phone, "+00 555 %03u %03u", random.below(1000), random.below(1000));
  vehicle.driverPhone = phone;
  char engine[32];
  std::snprintf(engine, sizeof engine, "%.1f l diesel", 1.2 + vehicle.kind->tankLitres / 40);
  vehicle.engine = vehicle.kind->tankLitres > 0 ? engine : "none";
  const bool works = kind < 5;  // trailers and machines rest at night
  if (works && (index % 2 == 0 || random.chance(0.2)))
    vehicle.duty = Duty::roundTheClock;
  else if (works && random.chance(0.25))
    vehicle.duty = Duty::nightShift;
  return vehicle;
}

void addVehicles(Account& account, std::uint64_t seed, std::int64_t firstId, int count) {
  account.vehicles.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i)
    account.vehicles.push_back(makeVehicle(seed, firstId + i, i));
}

}  // namespace

const FleetVehicle* Account::vehicle(std::int64_t id) const {
  if (vehicles.empty() || id < vehicles.front().id || id > vehicles.back().id) return nullptr;
  return &vehicles[static_cast<std::size_t>(id - vehicles.front().id)];
}

std::vector<Account> makeAccounts(std::uint64_t seed, int demoVehicles) {
  const char* const rows[][11] = {
      {"demo", "Dana Mostyn", "Larkhåven Deliveries Ltd", "Active", "+00 555 014 200", "Ternwick Road 48",
       "LH 2041 Larkhåven", "LH 884 201 775", "+00 555 014 201", "office@larkhaven-deliveries.example",
       "2031-03-31"},
      {"empty", "Emil Pryde", "Pryde & Daughters Boatyard", "Trial period", "+00 555 020 110",
       "Saltgate Lane 3", "LH 2007 Larkhåven", "LH 120 553 090", "+00 555 020 111", "emil@prydeboats.example",
       "2027-06-30"},
      {"harbour", "Henrike Solberg", "Harbour Works Cooperative", "Active", "+00 555 033 700",
       "Pebblefen Avenue 112", "Entrance B, LH 2010 Larkhåven", "LH 455 910 326", "+00 555 033 701",
       "dispatch@harbourworks.example", "2029-12-31"},
      {"nora", "Nora Wexley", "", "Active", "", "Wrenholt Gardens 9", "", "", "+00 555 071 436",
       "nora.wexley@mail.example", "2028-01-15"}};
  std::vector<Account> accounts;
  for (const auto& [user, name, company, status, sms, address1, address2, vat, phone, mail, expires] : rows)
    accounts.push_back({user, name, company, status, sms, address1, address2, vat, phone, mail, expires, {}});
  addVehicles(accounts[0], seed, 1001, demoVehicles);
  addVehicles(accounts[2], seed, 50001, 12);
  addVehicles(accounts[3], seed, 60001, 1);
  return accounts;
}

}  // namespace fleetor::demo
