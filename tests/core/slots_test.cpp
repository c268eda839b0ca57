#include "core/slots.h"

#include <gtest/gtest.h>

#include "core/errors.h"

TEST(SlotTable, HoldsSixSlotsAndRefusesAnyOtherNumber) {
    tavo::SlotTable table;
    for (int i = 0; i < 6; ++i)
        table[i].moles = i;
    EXPECT_EQ(table[5].moles, 5.0);
    EXPECT_THROW(table[6], tavo::SubscriptOutOfRange);
    EXPECT_THROW(table[-1], tavo::SubscriptOutOfRange);
}
