// SPDX-License-Identifier: MIT
#pragma once

#include "samples/Illustrations.h"

#include <cstdint>
#include <span>

// The people and goods of the demo shop, all invented. Numbers (ids) are places in these lists, counted from 1.
namespace vellumo::samples {

struct DemoCategory {
    const char* name;
    const char* description;
    Motif motif;
    Color color;
};

struct DemoSupplier {
    const char* company;
    const char* contact;
    const char* city;
    const char* country;
    const char* phone;
    const char* homepage; // null = none
};

struct DemoProduct {
    const char* name;
    int category;
    int supplier;
    const char* unit;
    int cents;
    int stock;
    double weight; // kilograms; 0 = unknown
    bool discontinued;
    Color color;
};

struct DemoEmployee {
    const char* lastName;
    const char* firstName;
    const char* title;
    int birthYear;
    int hireYear;
    int reportsTo; // 0 = nobody
    const char* notes;
    Looks looks;
};

struct DemoCustomer {
    const char* name;
    const char* city;
    const char* country;
    const char* email; // null = none
    const char* note;  // null = none; "" = an empty text
};

[[nodiscard]] std::span<const DemoCategory> demoCategories();
[[nodiscard]] std::span<const DemoSupplier> demoSuppliers();
[[nodiscard]] std::span<const DemoProduct> demoProducts();
[[nodiscard]] std::span<const DemoEmployee> demoEmployees();
[[nodiscard]] std::span<const DemoCustomer> demoCustomers();

} // namespace vellumo::samples
