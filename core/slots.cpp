#include "core/slots.h"

#include "core/errors.h"

namespace tavo {

namespace {
std::size_t checked(int number) {
    if (number < 0 || number >= SlotTable::size)
        throw SubscriptOutOfRange("equation slot " + std::to_string(number) + " is outside 0 to 5");
    return static_cast<std::size_t>(number);
}
}  // namespace

EquationSlot& SlotTable::operator[](int number) {
    return slots_[checked(number)];
}

const EquationSlot& SlotTable::operator[](int number) const {
    return slots_[checked(number)];
}

}  // namespace tavo
