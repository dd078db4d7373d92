#include <gtest/gtest.h>

#include <string>

#include "velatrix/error.h"

TEST(LastError, FormatsReplacesAndReturnsFormatterResult) {
    EXPECT_EQ(velatrix_report_error_internal("Report id %u isn't supported.", 14u), 29);
    EXPECT_STREQ(velatrix_get_last_error(), "Report id 14 isn't supported.");
    velatrix_report_error_internal("%s", "second");
    EXPECT_STREQ(velatrix_get_last_error(), "second");
    EXPECT_EQ(velatrix_get_last_error(), velatrix_get_last_error_internal());
}

TEST(LastError, LongTextIsCutTo1022Characters) {
    const std::string long_text(2000, 'x');
    EXPECT_EQ(velatrix_report_error_internal("%s", long_text.c_str()), 2000);
    EXPECT_EQ(std::string(velatrix_get_last_error()), std::string(1022, 'x'));
    const std::string exact(1022, 'y');
    velatrix_report_error_internal("%s", exact.c_str());
    EXPECT_EQ(std::string(velatrix_get_last_error()), exact);
}
