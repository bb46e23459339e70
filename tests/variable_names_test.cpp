#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "catalog/variable_names.h"

namespace {
constexpr int kAnd = 1, kBoo = 9, kCar = 17, kCas = 18, kCen = 19, kPav = 61, kPeg = 62, kPer = 63, kSer = 76,
              kTel = 79;
}  // namespace

TEST(VariableNames, NumbersPrintInTheirRanges) {
    struct Case {
        int constellation;
        long number;
        int superscript;
        const char* text;
    } cases[] = {
        {kAnd, 1, 0, "R And"},          {kAnd, 9, 0, "Z And"},        {kAnd, 10, 0, "RR And"},
        {kAnd, 18, 0, "RZ And"},        {kAnd, 19, 0, "SS And"},      {kAnd, 53, 0, "YZ And"},
        {kAnd, 54, 0, "ZZ And"},        {kAnd, 55, 0, "AA And"},      {kAnd, 79, 0, "AZ And"},
        {kAnd, 80, 0, "BB And"},        {kAnd, 226, 0, "HZ And"},     {kAnd, 227, 0, "II And"},
        {kAnd, 228, 0, "IK And"},       {kAnd, 244, 0, "KK And"},     {kAnd, 334, 0, "QZ And"},
        {kAnd, 335, 0, "V335 And"},     {kAnd, 8999, 0, "V8999 And"}, {kCen, 9001, 0, "Alpha Cen"},
        {kCen, 9001, 2, "Alpha2 Cen"},  {kAnd, 9024, 0, "Omega And"}, {kBoo, 9109, 0, "I Boo"},
        {kCas, 9106, 0, "CE Cas"},      {kPeg, 9160, 0, "EP Peg"},    {kTel, 9101, 0, "KU Tel"},
        {kCar, 9112, 0, "ZZ Car"},      {kAnd, 9201, 0, "A And"},     {kAnd, 9217, 0, "Q And"},
        {kAnd, 9200, 0, "@ And"},       {88, 1, 0, "R Vul"},
        {kAnd, 0, 0, ""},               {kAnd, 9000, 0, ""},          {kAnd, 9025, 0, ""},
        {kAnd, 9300, 0, ""},            {0, 1, 0, ""},                {89, 1, 0, ""},
    };
    for (const Case& c : cases) EXPECT_EQ(variableName(c.constellation, c.number, c.superscript), c.text) << c.number;
}

TEST(VariableNames, LetterWordsGiveTheirNumbers) {
    struct Case {
        const char* letters;
        int constellation;
        std::vector<long> numbers;
    } cases[] = {
        {"I", kBoo, {9109}},       {"I", kAnd, {9209}},       {"RHO", kPav, {9017}},     {"RHO", kAnd, {}},
        {"ZZ", kCar, {54, 9112}},  {"ZZ", kPer, {54, 9102}},  {"ZZ", kSer, {54, 9104}},  {"ZZ", 40, {54}},
        {"CE", kCas, {106, 9106}}, {"EQ", kPeg, {160, 9160}}, {"KU", kTel, {254, 9101}}, {"KU", kAnd, {254}},
        {"Ze", kAnd, {9006}},      {"Z", kAnd, {9}},          {"ZE", kAnd, {}},          {"Et", kAnd, {9007}},
        {"ET", kAnd, {163}},       {"rr", kAnd, {10}},        {"JA", kAnd, {}},          {"BA", kAnd, {}},
        {"RA", kAnd, {}},          {"V335", kAnd, {335}},     {"v1500", kAnd, {1500}},   {"V334", kAnd, {}},
        {"V9000", kAnd, {}},       {"", kAnd, {}},            {"RRR", kAnd, {}},
    };
    for (const Case& c : cases) {
        long out[kMaxVariableNumbers] = {};
        const int n = variableNumbersOf(c.letters, c.constellation, out);
        EXPECT_EQ(std::vector<long>(out, out + n), c.numbers) << c.letters << ' ' << c.constellation;
    }
}

TEST(VariableNames, EveryNumberWithATextReadsBackFromIt) {
    std::vector<long> numbers;
    for (long n = 1; n <= 8999; ++n) numbers.push_back(n);
    for (long n = 9001; n <= 9024; ++n) numbers.push_back(n);
    for (long n = 9201; n <= 9217; ++n) numbers.push_back(n);
    for (long n : numbers) {
        VariableDesignation v;
        ASSERT_TRUE(parseVariable(variableName(kCen, n).c_str(), &v)) << n;
        EXPECT_EQ(v.count, 1);
        EXPECT_EQ(v.numbers[0], n);
        EXPECT_EQ(v.constellation, kCen);
    }
    // Outside the lists above a number of 9100 to 9299 prints as a name that
    // reads back as another number.
    VariableDesignation v;
    ASSERT_TRUE(parseVariable(variableName(kAnd, 9150).c_str(), &v));
    EXPECT_EQ(v.numbers[0], 54);
    ASSERT_TRUE(parseVariable(variableName(kAnd, 9218).c_str(), &v));
    EXPECT_EQ(v.numbers[0], 1);
}

TEST(VariableNames, EveryLetterNameReadsAndPrintsBackOnce) {
    // The letter names written out from the naming rule itself: single R to
    // Z, pairs from R, and pairs from A to Q without J.
    std::vector<std::string> names;
    const std::string late = "RSTUVWXYZ", early = "ABCDEFGHIKLMNOPQRSTUVWXYZ";
    for (char c : late) names.push_back(std::string(1, c));
    for (size_t i = 0; i < late.size(); ++i)
        for (size_t j = i; j < late.size(); ++j) names.push_back({late[i], late[j]});
    for (size_t i = 0; early[i] != 'R'; ++i)
        for (size_t j = i; j < early.size(); ++j) names.push_back({early[i], early[j]});
    std::set<long> seen;
    for (const std::string& name : names) {
        VariableDesignation v;
        ASSERT_TRUE(parseVariable((name + " Lyr").c_str(), &v)) << name;
        EXPECT_EQ(variableName(v.constellation, v.numbers[0]), name + " Lyr");
        seen.insert(v.numbers[0]);
    }
    EXPECT_EQ(seen.size(), 334u);
    EXPECT_EQ(*seen.begin(), 1);
    EXPECT_EQ(*seen.rbegin(), 334);
}

TEST(VariableNames, TypedNamesTakeASuperscriptOnlyOnAGreekWord) {
    VariableDesignation v;
    ASSERT_TRUE(parseVariable("Alpha 2 Cen", &v));
    EXPECT_EQ(v.numbers[0], 9001);
    EXPECT_EQ(v.superscript, 2);
    ASSERT_TRUE(parseVariable("Alpha2 Cen", &v));
    EXPECT_EQ(v.superscript, 2);
    ASSERT_TRUE(parseVariable("ZZ Car", &v));
    EXPECT_EQ(v.count, 2);
    for (const char* bad : {"RR2 Lyr", "RR Xyz", "RR", "R R Lyr", ""}) EXPECT_FALSE(parseVariable(bad, &v)) << bad;
    EXPECT_FALSE(parseVariable(nullptr, &v));
}
