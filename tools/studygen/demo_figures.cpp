// The figures of the demonstration study. Deaths are per 100,000 men a year and incidence per man and
// year at the anchor ages 0, 1, 5, 15, 25, 35, 45, 55, 65, 75, 85; the sexes' factors turn them into
// women's figures (and into men's for the causes of women). Durations are in years, disability
// weights on the scale of 0 (full health) to 1.

#include "demo_study.h"

#include <cmath>

namespace vesk::studygen::demo {

double atAge(const Profile& profile, double age) {
    for (std::size_t k = 1; k < kAnchorAges.size(); ++k)
        if (age < kAnchorAges[k]) {
            const double lo = kAnchorAges[k - 1], hi = kAnchorAges[k];
            return profile[k - 1] + (profile[k] - profile[k - 1]) * (age - lo) / (hi - lo);
        }
    return profile.back();
}

const std::vector<Region>& regions() {
    static const std::vector<Region> all = {
        {"CEN", "Central Plain"},
        {"NTH", "Northern Highlands"},
        {"CST", "Coast"},
    };
    return all;
}

// The capital has the lowest mortality and the most migrants; the highland districts the highest
// mortality and the most communicable disease; the coast the most malaria.
const std::vector<District>& districts() {
    static const std::vector<District> all = {
        {"CAP", "Capital City", "CEN", 880000, 0.011, 0.85, 0.60, 0.30, 1.10, 0.20},
        {"MER", "Merino", "CEN", 310000, 0.014, 0.94, 0.85, 0.60, 1.00, 0.05},
        {"LAK", "Lakeside", "CEN", 190000, 0.016, 1.00, 1.00, 0.90, 1.00, 0.00},
        {"DOR", "Dorva", "CEN", 140000, 0.017, 1.04, 1.10, 0.70, 0.95, -0.05},
        {"HIL", "Highland", "NTH", 240000, 0.019, 1.10, 1.35, 0.40, 0.90, -0.08},
        {"TAM", "Tamsa Valley", "NTH", 160000, 0.020, 1.14, 1.40, 1.20, 0.90, -0.10},
        {"KER", "Kereni", "NTH", 85000, 0.020, 1.17, 1.50, 0.90, 0.85, -0.12},
        {"SLO", "S\u00e3o Louren\u00e7o", "CST", 420000, 0.015, 0.98, 1.05, 2.00, 1.05, 0.05},
    };
    return all;
}

const std::vector<Level>& groups() {
    static const std::vector<Level> all = {
        {"1", "Communicable, maternal, perinatal and nutritional conditions", ""},
        {"2", "Noncommunicable diseases", ""},
        {"3", "Injuries", ""},
    };
    return all;
}

const std::vector<Level>& subgroups() {
    static const std::vector<Level> all = {
        {"11", "Infectious and parasitic diseases", "1"},
        {"12", "Respiratory infections", "1"},
        {"13", "Maternal conditions", "1"},
        {"14", "Perinatal conditions", "1"},
        {"15", "Nutritional deficiencies", "1"},
        {"21", "Malignant neoplasms", "2"},
        {"22", "Diabetes mellitus", "2"},
        {"23", "Neuropsychiatric conditions", "2"},
        {"24", "Cardiovascular diseases", "2"},
        {"25", "Respiratory diseases", "2"},
        {"26", "Digestive diseases", "2"},
        {"27", "Other noncommunicable diseases", "2"},
        {"31", "Unintentional injuries", "3"},
        {"32", "Intentional injuries", "3"},
    };
    return all;
}

const std::vector<Level>& clusters() {
    static const std::vector<Level> all = {
        {"1101", "Tuberculosis and HIV/AIDS", "11"},
        {"1102", "Diarrhoeal diseases", "11"},
        {"1103", "Vector-borne diseases", "11"},
        {"1104", "Other infectious and parasitic diseases", "11"},
        {"1201", "Lower respiratory infections", "12"},
        {"1301", "Maternal conditions", "13"},
        {"1401", "Neonatal conditions", "14"},
        {"1501", "Undernutrition", "15"},
        {"2101", "Respiratory cancers", "21"},
        {"2102", "Breast cancer", "21"},
        {"2201", "Diabetes mellitus", "22"},
        {"2301", "Mood disorders", "23"},
        {"2401", "Ischaemic and cerebrovascular diseases", "24"},
        {"2501", "Chronic respiratory diseases", "25"},
        {"2601", "Liver diseases", "26"},
        {"2701", "Other noncommunicable diseases", "27"},
        {"3101", "Transport injuries", "31"},
        {"3102", "Other unintentional injuries", "31"},
        {"3201", "Self-inflicted injuries", "32"},
        {"3202", "Interpersonal violence", "32"},
    };
    return all;
}

namespace {

const AgeWindow kAllAges{};
const AgeWindow kChildbearing{15, 50};
const AgeWindow kUnderFive{0, 5};

// The epidemiology of a cause without sequelae.
std::vector<Condition> own(const Profile& incidence, Sexes sexes, double years, double weight) {
    return {{"", "", incidence, sexes, years, weight}};
}

std::vector<Cause> communicable() {
    return {
        {"11011",
         "Tuberculosis",
         "1101",
         {15, 8, 3, 6, 25, 45, 60, 75, 90, 110, 120},
         {1, 0.6},
         kAllAges,
         own({2e-4, 4e-4, 3e-4, 8e-4, 1.6e-3, 1.9e-3, 2e-3, 2e-3, 2.1e-3, 2.1e-3, 1.9e-3}, {1, 0.6}, 0.6,
             0.271)},
        {"11012",
         "HIV/AIDS",
         "1101",
         {60, 15, 5, 8, 60, 90, 60, 30, 15, 8, 5},
         {1, 1.1},
         kAllAges,
         own({5e-4, 1e-4, 2e-5, 5e-4, 2.5e-3, 2e-3, 1e-3, 4e-4, 1e-4, 5e-5, 2e-5}, {1, 1.1}, 9, 0.22)},
        {"11021",
         "Diarrhoeal diseases",
         "1102",
         {350, 60, 6, 3, 4, 5, 7, 12, 30, 80, 250},
         {1, 0.95},
         kAllAges,
         own({2.8, 2.0, 0.6, 0.4, 0.4, 0.4, 0.4, 0.4, 0.4, 0.5, 0.6}, {1, 1}, 0.01, 0.105)},
        {"11031",
         "Malaria",
         "1103",
         {150, 50, 8, 3, 3, 3, 4, 5, 8, 15, 30},
         {1, 1},
         kAllAges,
         own({0.25, 0.3, 0.15, 0.06, 0.04, 0.04, 0.04, 0.04, 0.04, 0.04, 0.04}, {1, 1}, 0.01, 0.191)},
        {"11041",
         "Other infectious and parasitic diseases",
         "1104",
         {150, 25, 10, 6, 8, 10, 14, 22, 40, 80, 180},
         {1, 0.9},
         kAllAges,
         own({0.05, 0.04, 0.02, 0.01, 0.01, 0.01, 0.01, 0.01, 0.012, 0.015, 0.02}, {1, 0.95}, 0.04, 0.15)},
        {"12011",
         "Lower respiratory infections",
         "1201",
         {500, 40, 5, 3, 5, 8, 12, 25, 70, 250, 900},
         {1, 0.9},
         kAllAges,
         own({0.3, 0.2, 0.05, 0.02, 0.015, 0.015, 0.02, 0.025, 0.035, 0.05, 0.08}, {1, 0.9}, 0.02, 0.279)},
        {"13011",
         "Maternal conditions",
         "1301",
         {0, 0, 0, 10, 18, 15, 4, 0, 0, 0, 0},
         {0, 1},
         kChildbearing,
         own({0, 0, 0, 8e-3, 1.4e-2, 1e-2, 2e-3, 0, 0, 0, 0}, {0, 1}, 0.08, 0.2)},
        {"14011",
         "Preterm birth complications",
         "1401",
         {700, 5, 0, 0, 0, 0, 0, 0, 0, 0, 0},
         {1, 0.8},
         kUnderFive,
         own({6e-3, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}, {1, 0.8}, 70, 0.09)},
        {"14012",
         "Birth asphyxia and birth trauma",
         "1401",
         {500, 3, 0, 0, 0, 0, 0, 0, 0, 0, 0},
         {1, 0.8},
         kUnderFive,
         own({2e-3, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}, {1, 0.8}, 70, 0.2)},
        {"15011",
         "Protein-energy malnutrition",
         "1501",
         {80, 40, 5, 2, 2, 2, 3, 4, 8, 20, 60},
         {1, 1.05},
         kAllAges,
         {{"15011WS",
           "Wasting",
           {0.06, 0.08, 0.01, 2e-3, 1e-3, 1e-3, 1e-3, 1e-3, 2e-3, 3e-3, 4e-3},
           {1, 1.05},
           0.5,
           0.053},
          {"15011ST", "Stunting", {0.04, 0.03, 0, 0, 0, 0, 0, 0, 0, 0, 0}, {1, 0.95}, 4, 0.002}}},
    };
}

std::vector<Cause> noncommunicable() {
    return {
        {"21011",
         "Trachea, bronchus and lung cancers",
         "2101",
         {0, 0, 0.1, 0.2, 0.5, 3, 15, 50, 110, 170, 180},
         {1, 0.35},
         kAllAges,
         own({0, 0, 0, 1e-6, 5e-6, 3e-5, 1.5e-4, 5e-4, 1.1e-3, 1.6e-3, 1.7e-3}, {1, 0.35}, 1.2, 0.2)},
        {"21021",
         "Breast cancer",
         "2102",
         {0, 0, 0, 0.2, 2, 10, 25, 35, 45, 55, 70},
         {0.01, 1},
         kAllAges,
         own({0, 0, 0, 2e-6, 8e-5, 4e-4, 9e-4, 1.2e-3, 1.4e-3, 1.5e-3, 1.5e-3}, {0.01, 1}, 8, 0.09)},
        {"22011",
         "Diabetes mellitus",
         "2201",
         {0, 0.2, 0.3, 1, 2, 5, 18, 50, 110, 200, 300},
         {1, 1.1},
         kAllAges,
         {{"22011UC",
           "Uncomplicated diabetes",
           {0, 1e-5, 2e-5, 2e-4, 6e-4, 1.5e-3, 3.5e-3, 6e-3, 8e-3, 8e-3, 6e-3},
           {1, 1.1},
           20,
           0.015},
          {"22011DF",
           "Diabetic foot",
           {0, 0, 0, 1e-5, 3e-5, 1e-4, 3e-4, 6e-4, 9e-4, 1e-3, 9e-4},
           {1, 0.8},
           5,
           0.133},
          {"22011NP",
           "Diabetic neuropathy",
           {0, 0, 0, 3e-5, 1e-4, 3e-4, 8e-4, 1.5e-3, 2e-3, 2e-3, 1.8e-3},
           {1, 1},
           12,
           0.072},
          {"22011RP",
           "Diabetic retinopathy",
           {0, 0, 0, 1e-5, 5e-5, 2e-4, 5e-4, 1e-3, 1.4e-3, 1.4e-3, 1.2e-3},
           {1, 1},
           15,
           0.2}}},
        // Unipolar depression is a cause of disability, not of death: no deaths are coded to it.
        {"23011",
         "Unipolar depressive disorders",
         "2301",
         {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0},
         {1, 1},
         kAllAges,
         own({0, 0, 1e-3, 1.5e-2, 1.8e-2, 1.8e-2, 1.6e-2, 1.4e-2, 1.2e-2, 1.1e-2, 1e-2}, {1, 1.7}, 0.6,
             0.35)},
        {"24011",
         "Ischaemic heart disease",
         "2401",
         {0, 0, 0.1, 1, 5, 25, 90, 230, 500, 1100, 2500},
         {1, 0.65},
         kAllAges,
         {{"24011MI",
           "Acute myocardial infarction",
           {0, 0, 0, 2e-6, 2e-5, 2e-4, 1e-3, 2.5e-3, 4.5e-3, 7e-3, 1e-2},
           {1, 0.6},
           0.08,
           0.439},
          {"24011AP",
           "Angina pectoris",
           {0, 0, 0, 1e-5, 5e-5, 5e-4, 2e-3, 4e-3, 6e-3, 7e-3, 7e-3},
           {1, 0.9},
           6,
           0.124}}},
        {"24012",
         "Cerebrovascular disease",
         "2401",
         {0, 0.5, 0.5, 1, 4, 15, 50, 150, 380, 900, 2200},
         {1, 0.9},
         kAllAges,
         {{"24012AC",
           "First-ever acute stroke",
           {0, 5e-6, 5e-6, 1e-5, 3e-5, 1.2e-4, 5e-4, 1.5e-3, 3.5e-3, 7e-3, 1.2e-2},
           {1, 0.85},
           0.08,
           0.92},
          {"24012LT",
           "Long-term stroke survivors",
           {0, 3e-6, 3e-6, 7e-6, 2e-5, 8e-5, 3e-4, 9e-4, 2e-3, 3.5e-3, 5e-3},
           {1, 0.85},
           7,
           0.266}}},
        {"25011",
         "Chronic obstructive pulmonary disease",
         "2501",
         {0, 0.2, 0.2, 0.5, 1, 3, 10, 40, 130, 400, 900},
         {1, 0.55},
         kAllAges,
         own({0, 0, 0, 1e-5, 4e-5, 2e-4, 8e-4, 1.8e-3, 3e-3, 4e-3, 4e-3}, {1, 0.6}, 12, 0.19)},
        {"26011",
         "Cirrhosis of the liver",
         "2601",
         {0, 0.5, 0.5, 1, 6, 25, 50, 60, 65, 70, 60},
         {1, 0.45},
         kAllAges,
         own({0, 0, 0, 1e-5, 5e-5, 1.5e-4, 2.5e-4, 3e-4, 3e-4, 3e-4, 2.5e-4}, {1, 0.5}, 4, 0.33)},
        // Congenital anomalies, other cancers, kidney, musculoskeletal, sense organ and other chronic
        // diseases: the most of the disability of the causes not named.
        {"27011",
         "Other noncommunicable diseases",
         "2701",
         {300, 30, 15, 15, 25, 45, 110, 250, 550, 1300, 3500},
         {1, 0.8},
         kAllAges,
         own({0.02, 8e-3, 8e-3, 0.012, 0.015, 0.018, 0.022, 0.028, 0.035, 0.045, 0.055}, {1, 1.05}, 6, 0.1)},
    };
}

std::vector<Cause> injuries() {
    return {
        {"31011",
         "Road injuries",
         "3101",
         {10, 12, 10, 35, 60, 50, 45, 40, 40, 45, 50},
         {1, 0.3},
         kAllAges,
         {{"31011FR",
           "Fractures",
           {5e-4, 8e-4, 1e-3, 2.5e-3, 3e-3, 2.5e-3, 2e-3, 1.8e-3, 1.6e-3, 1.6e-3, 1.8e-3},
           {1, 0.35},
           0.12,
           0.2},
          {"31011TB",
           "Traumatic brain injury",
           {1e-4, 1.5e-4, 2e-4, 5e-4, 6e-4, 5e-4, 4e-4, 3.5e-4, 3e-4, 3e-4, 3e-4},
           {1, 0.35},
           0.2,
           0.359},
          {"31011SC",
           "Spinal cord injury",
           {5e-6, 8e-6, 1e-5, 4e-5, 5e-5, 4e-5, 3e-5, 2.5e-5, 2e-5, 2e-5, 2e-5},
           {1, 0.3},
           60,
           0.725}}},
        {"31021",
         "Falls",
         "3102",
         {10, 6, 3, 4, 6, 7, 9, 12, 20, 50, 200},
         {1, 0.6},
         kAllAges,
         own({2e-3, 5e-3, 4e-3, 3e-3, 2.5e-3, 2.5e-3, 3e-3, 4e-3, 6e-3, 9e-3, 1.4e-2}, {1, 0.9}, 0.1, 0.2)},
        {"31022",
         "Drowning",
         "3102",
         {15, 15, 10, 12, 8, 6, 5, 5, 5, 6, 8},
         {1, 0.45},
         kAllAges,
         own({5e-5, 1e-4, 8e-5, 8e-5, 6e-5, 5e-5, 4e-5, 4e-5, 4e-5, 4e-5, 4e-5}, {1, 0.5}, 0.02, 0.2)},
        // Fires, poisonings, animal bites and other unintentional injuries.
        {"31023",
         "Other unintentional injuries",
         "3102",
         {60, 20, 8, 15, 25, 25, 25, 25, 30, 45, 100},
         {1, 0.6},
         kAllAges,
         own({3e-3, 5e-3, 4e-3, 5e-3, 6e-3, 5e-3, 4.5e-3, 4e-3, 4e-3, 4.5e-3, 6e-3}, {1, 0.6}, 0.06, 0.15)},
        {"32011",
         "Self-inflicted injuries",
         "3201",
         {0, 0, 0.5, 15, 25, 22, 20, 20, 22, 25, 30},
         {1, 0.5},
         kAllAges,
         own({0, 0, 2e-5, 4e-4, 5e-4, 4e-4, 3e-4, 2.5e-4, 2e-4, 2e-4, 2e-4}, {1, 1.3}, 0.05, 0.15)},
        {"32021",
         "Interpersonal violence",
         "3202",
         {8, 2, 1.5, 20, 35, 25, 15, 9, 6, 5, 5},
         {1, 0.25},
         kAllAges,
         own({2e-4, 1e-4, 1e-4, 2e-3, 2.5e-3, 1.8e-3, 1.2e-3, 8e-4, 5e-4, 4e-4, 4e-4}, {1, 0.4}, 0.06, 0.18)},
    };
}

} // namespace

const std::vector<Cause>& causes() {
    static const std::vector<Cause> all = [] {
        std::vector<Cause> out = communicable();
        for (auto part : {noncommunicable(), injuries()})
            out.insert(out.end(), part.begin(), part.end());
        return out;
    }();
    return all;
}

double menDeathRate(double age) {
    if (age == 0)
        return 0.025;
    if (age < 30) {
        // Child deaths fall to age 10; from 15 the injuries of young men raise them again.
        static const double young[] = {0.0018, 0.0007, 0.0006, 0.0012, 0.0019, 0.0021};
        return young[age < 5 ? 0 : int(age) / 5];
    }
    // Gompertz: a = 0.00018, b = 0.08 a year, at the middle of the group (90 for the open group).
    return 0.00018 * std::exp(0.08 * (age < 85 ? age + 2.5 : 90));
}

double womenToMen(double age) {
    if (age == 0)
        return 0.85;
    if (age < 15)
        return 0.9;
    if (age < 30)
        return 0.55;
    if (age < 60)
        return 0.65;
    return age < 85 ? 0.75 : 0.85;
}

} // namespace vesk::studygen::demo
