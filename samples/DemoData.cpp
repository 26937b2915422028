// SPDX-License-Identifier: MIT
#include "samples/DemoData.h"

namespace vellumo::samples {
namespace {

constexpr DemoCategory categories[] = {
    {"Tea", "Loose leaf and tins. Thé, τσάι, чай, お茶, شاي", Motif::TeaTin, {52, 116, 110}},
    {"Coffee", "Roasted in small batches. Καφές, кофе, コーヒー, قهوة", Motif::CoffeeBag, {140, 76, 44}},
    {"Preserves", "Jams, jellies and honey. Μαρμελάδες, варенье, ジャム, مربى", Motif::JamJar, {176, 44, 68}},
    {"Ceramics", "Thrown and glazed by hand. Κεραμικά, керамика, 陶器, خزف", Motif::Mug, {62, 98, 168}},
    {"Candles", "Beeswax and soy. Κεριά, свечи, ろうそく, شموع", Motif::Candle, {226, 190, 116}},
    {"Stationery", "Paper, notebooks and cards. Γραφική ύλη, канцтовары, 文房具, قرطاسية", Motif::Notebook,
        {38, 84, 74}},
    {"Garden", "Pots, seedlings and tools. Κήπος, сад, 園芸, حديقة", Motif::Plant, {194, 102, 68}},
    {"Textiles", "Cushions, towels and throws. Υφάσματα, текстиль, 布製品, منسوجات", Motif::Cushion, {124, 84, 154}},
};

constexpr DemoSupplier suppliers[] = {
    {"Harbour Leaf Trading", "Agnes Holloway", "Bristol", "United Kingdom", "+44 117 555 0142",
        "Harbour Leaf#http://www.harbourleaf.example/#"},
    {"Brûlerie du Vieux Quai", "Étienne Maréchal", "Bordeaux", "France", "+33 5 55 50 12 80",
        "Brûlerie#http://www.vieuxquai.example/#"},
    {"Obsthof Krämer & Söhne", "Jürgen Krämer", "Überlingen", "Germany", "+49 7551 555 018", nullptr},
    {"Εργαστήριο Θάλασσα", "Ελένη Παπαδάκη", "Ηράκλειο", "Greece", "+30 2810 555 061",
        "Θάλασσα#http://www.thalassa.example/#"},
    {"Свечная мастерская «Пчела»", "Олег Воронцов", "Суздаль", "Russia", "+7 49231 5 55 07", nullptr},
    {"和紙工房 みずき", "水木 春香", "高知", "Japan", "+81 88 555 0193", "みずき#http://www.mizuki.example/#"},
    {"مشتل الواحة", "سمير الحداد", "طنجة", "Morocco", "+212 539 555 024", nullptr},
    {"Tkalnia Złota Nić", "Małgorzata Wiśniewska", "Łódź", "Poland", "+48 42 555 01 37",
        "Złota Nić#http://www.zlotanic.example/#"},
    {"Fjord & Fyr", "Søren Ångström", "Bergen", "Norway", "+47 55 55 01 66", nullptr},
    {"Quinta das Oliveiras", "João Conceição", "Évora", "Portugal", "+351 266 555 090",
        "Quinta#http://www.quintadasoliveiras.example/#"},
};

constexpr DemoProduct products[] = {
    {"Assam Breakfast", 1, 1, "125 g tin", 895, 64, 0.19, false, {150, 60, 44}},
    {"Darjeeling First Flush", 1, 1, "100 g tin", 1450, 18, 0.16, false, {96, 132, 70}},
    {"Earl Grey with Cornflower", 1, 1, "125 g tin", 925, 47, 0.19, false, {58, 90, 150}},
    {"Sencha 煎茶", 1, 6, "100 g tin", 1680, 22, 0.16, false, {72, 128, 84}},
    {"Peppermint", 1, 7, "80 g tin", 690, 71, 0.14, false, {52, 140, 124}},
    {"Rooibos Vanilla", 1, 1, "125 g tin", 780, 0, 0.19, true, {176, 84, 50}},
    {"Espresso Quai Nord", 2, 2, "500 g bag", 1290, 53, 0.52, false, {84, 50, 40}},
    {"Filter Roast Yirgacheffe", 2, 2, "250 g bag", 1175, 36, 0.27, false, {160, 92, 50}},
    {"Décaféiné du Soir", 2, 2, "250 g bag", 1095, 19, 0.27, false, {64, 84, 120}},
    {"Ελληνικός καφές", 2, 4, "200 g bag", 640, 40, 0.22, false, {40, 96, 140}},
    {"House Blend", 2, 2, "1 kg bag", 2150, 12, 1.03, false, {120, 60, 56}},
    {"Raspberry Jam", 3, 3, "240 g jar", 520, 88, 0.41, false, {190, 40, 76}},
    {"Bodensee Apple Jelly", 3, 3, "240 g jar", 480, 61, 0.41, false, {214, 160, 62}},
    {"Quince with Ginger", 3, 10, "220 g jar", 615, 27, 0.39, false, {220, 130, 48}},
    {"Thyme Honey / Θυμαρίσιο μέλι", 3, 4, "450 g jar", 1340, 33, 0.7, false, {206, 142, 36}},
    {"Bitter Orange Marmalade", 3, 10, "240 g jar", 545, 54, 0.41, false, {232, 112, 36}},
    {"Blackcurrant Preserve", 3, 3, "240 g jar", 560, 4, 0.41, false, {84, 36, 88}},
    {"Mug Aegean", 4, 4, "1 piece", 1890, 25, 0.38, false, {44, 104, 170}},
    {"Mug Driftwood", 4, 9, "1 piece", 1750, 31, 0.4, false, {140, 124, 106}},
    {"Tea Bowl 茶碗", 4, 6, "1 piece", 3400, 7, 0.31, false, {70, 80, 76}},
    {"Cup Terracotta", 4, 10, "set of 2", 2200, 15, 0.55, false, {190, 98, 66}},
    {"Mug Night Sky", 4, 9, "1 piece", 1950, 0, 0.38, true, {40, 44, 84}},
    {"Beeswax Pillar", 5, 5, "1 piece, 15 cm", 1260, 42, 0.36, false, {224, 176, 84}},
    {"Свеча «Зимний сад»", 5, 5, "1 piece, 12 cm", 1140, 23, 0.29, false, {108, 148, 150}},
    {"Lavender Soy Candle", 5, 9, "1 piece, 10 cm", 980, 37, 0.24, false, {156, 132, 190}},
    {"Advent Set", 5, 5, "set of 4", 2480, 9, 0.9, false, {176, 48, 52}},
    {"Sea Salt Soy Candle", 5, 9, "1 piece, 10 cm", 980, 30, 0.24, false, {124, 168, 188}},
    {"Notebook Pine, dotted", 6, 6, "A5, 160 pages", 1420, 66, 0.3, false, {38, 84, 74}},
    {"Notebook Rust, plain", 6, 6, "A5, 160 pages", 1420, 45, 0.3, false, {158, 76, 48}},
    {"Washi Journal 和紙", 6, 6, "A6, 96 pages", 1890, 14, 0.15, false, {166, 58, 80}},
    {"Travel Log", 6, 8, "A6, 128 pages", 1080, 52, 0.18, false, {62, 92, 132}},
    {"Letter Set Olive", 6, 10, "20 sheets", 760, 38, 0.22, false, {118, 126, 60}},
    {"Aloe in Clay Pot", 7, 7, "1 plant", 1590, 11, 1.4, false, {196, 104, 70}},
    {"Mint Seedling", 7, 7, "1 plant", 420, 58, 0, false, {110, 92, 80}},
    {"Succulent Trio", 7, 7, "set of 3", 2350, 8, 1.9, false, {206, 176, 144}},
    {"Glazed Pot Indigo", 7, 4, "1 piece, 14 cm", 1980, 17, 1.1, false, {52, 72, 140}},
    {"Cushion Plum Stripe", 8, 8, "45 x 45 cm", 2950, 21, 0.6, false, {124, 70, 130}},
    {"Cushion Moss", 8, 8, "45 x 45 cm", 2950, 19, 0.6, false, {92, 116, 70}},
    {"Wool Throw Złota", 8, 8, "130 x 180 cm", 7900, 5, 1.3, false, {206, 152, 60}},
    {"Linen Towel Harbour", 8, 1, "50 x 70 cm", 1240, 74, 0, false, {78, 120, 150}},
};

constexpr Color fair{238, 200, 170};
constexpr Color olive{206, 158, 120};
constexpr Color brown{146, 98, 70};

constexpr DemoEmployee employees[] = {
    {"Fernandes", "Beatriz", "Owner", 1968, 1996, 0, "Founded the shop with one shelf of tea.",
        {olive, {70, 44, 34}, {120, 50, 70}, true}},
    {"Okafor", "Daniel", "Buyer", 1979, 2001, 1, "Speaks English, Igbo and French.",
        {brown, {34, 28, 28}, {58, 104, 140}}},
    {"Lindqvist", "Åsa", "Accounts", 1974, 1999, 1, "", {fair, {214, 176, 110}, {90, 120, 90}, true}},
    {"Papadakis", "Nikos", "Warehouse", 1985, 2008, 2, "Υπεύθυνος αποθήκης. Τηλέφωνο εσωτερικό 14.",
        {olive, {44, 36, 34}, {170, 120, 60}}},
    {"Соколова", "Ирина", "Customer care", 1990, 2014, 3, "Отвечает на письма до обеда.",
        {fair, {130, 76, 48}, {70, 80, 150}, true}},
    {"中村", "健", "Packing", 1993, 2016, 4, "月曜日と木曜日", {{228, 186, 150}, {30, 28, 32}, {60, 130, 120}}},
    {"Haddad", "Layla", "Sales", 1988, 2012, 2, "تتحدث العربية والفرنسية", {olive, {50, 36, 40}, {160, 70, 90}, true}},
    {"O’Brien", "Seán", "Sales", 1995, 2019, 2, nullptr, {fair, {178, 92, 48}, {80, 110, 70}}},
};

constexpr DemoCustomer customers[] = {
    {"Amelia Whitcombe", "Bath", "United Kingdom", "amelia@whitcombe.example", "Prefers the side entrance."},
    {"Café Morgenrot", "Leipzig", "Germany", "bestellung@morgenrot.example",
        "Lieferung nur dienstags, bitte vor 8 Uhr läuten."},
    {"Βιβλιοπωλείο Ήλιος", "Αθήνα", "Greece", "info@ilios.example", "Παραδίδουμε κάθε Πέμπτη πρωί."},
    {"Чайная «Самовар»", "Казань", "Russia", "zakaz@samovar.example",
        "Постоянный клиент с 2009 года. Скидка пять процентов."},
    {"喫茶 つばめ", "京都", "Japan", "tsubame@kissa.example", "贈り物用の包装をお願いします。"},
    {"مقهى الياسمين", "دمشق", "Syria", "yasmin@maqha.example", "يرجى الاتصال قبل التسليم."},
    {"Brook & Daughter", "Norwich", "United Kingdom", "post@brookdaughter.example",
        "Sends a thank-you card every time 💌"},
    {"Librería Cervantes 23", "Salamanca", "Spain", "hola@cervantes23.example",
        "Envolver para regalo: sí. ¡Sin plástico!"},
    {"Atelier Noémie", "Lyon", "France", nullptr, "Règle par virement à trente jours."},
    {"Hiroshi Tanabe", "札幌", "Japan", "h.tanabe@post.example", "𠮷野 is written with U+20BB7, not 吉野."},
    {"Marta Kowalczyk", "Gdańsk", "Poland", "marta.k@poczta.example", nullptr},
    {"Ólafur Þórðarson", "Akureyri", "Iceland", "olafur@bref.example", "Sendist með pósti á föstudögum."},
    {"Villa Rosengarten", "Bolzano", "Italy", "ricevimento@rosengarten.example", "Hotel, 24 Zimmer / camere."},
    {"Georgina Ashdown", "Lewes", "United Kingdom", nullptr, ""},
    {"Pâtisserie Violette", "Nantes", "France", "contact@violette.example", "Commande mensuelle de miel 🍯 et de thé 🍵"},
    {"Hüseyin Yıldız", "İzmir", "Turkey", "h.yildiz@posta.example", "Büyük İ ile yazılır."},
    {"Dóra Szűcs", "Pécs", "Hungary", "dora@szucs.example", "Árvíztűrő tükörfúrógép."},
    {"Teodor Ionescu", "Iași", "Romania", "teodor@ionescu.example", nullptr},
    {"Κατερίνα Δημητρίου", "Θεσσαλονίκη", "Greece", "katerina@dimitriou.example", "Προτιμά ανακυκλωμένη συσκευασία ♻"},
    {"Гостиница «Берёзка»", "Ярославль", "Russia", nullptr, "Счёт отправлять в бухгалтерию."},
    {"Grün & Stein Floristik", "Basel", "Switzerland", "hallo@gruenundstein.example", "Abholung am Hintereingang."},
    {"Isabel Nóbrega", "Porto", "Portugal", "isabel@nobrega.example", "Aniversário a 3 de março 🎂"},
    {"The Paper Lantern", "Galway", "Ireland", "shop@paperlantern.example", "Reseller, 12 % off stationery."},
    {"Linnea Bergström", "Uppsala", "Sweden", "linnea@bergstrom.example", nullptr},
    {"Restaurant De Kromme Lepel", "Utrecht", "Netherlands", "keuken@krommelepel.example", "Kopjes zonder oor."},
    {"Yusuf El Amrani", "فاس", "Morocco", nullptr, "العنوان القديم ما زال صالحا."},
    {"Priya Raman", "Chennai", "India", "priya@raman.example", "தேநீர் மட்டும். Ships by sea."},
    {"דפנה לוי", "חיפה", "Israel", "dafna@levi.example", "להתקשר לפני המשלוח."},
    {"김서연", "부산", "South Korea", "seoyeon@kim.example", "선물 포장 부탁드립니다."},
    {"林雅婷", "台南", "Taiwan", "yating@lin.example", "週末送達。"},
    {"Kahurangi Thompson", "Nelson", "New Zealand", "kahu@thompson.example", "Kia ora! Leave parcels in the shed."},
    {"Mercado Azul", "Valparaíso", "Chile", "compras@mercadoazul.example", "Orders once a season, always by ship 🚢"},
    {"Nguyễn Thị Hạnh", "Huế", "Vietnam", "hanh@nguyen.example", "Giao hàng buổi sáng."},
    {"Fiona MacAskill", "Portree", "United Kingdom", nullptr, "Tapadh leibh!"},
    {"Książkowa Chatka", "Kraków", "Poland", "biuro@chatka.example", "Zażółć gęślą jaźń."},
    {"Studio Vier", "Wien", "Austria", "office@studiovier.example", "UID liegt vor, Rechnung ohne MwSt."},
};

} // namespace

std::span<const DemoCategory> demoCategories() { return categories; }
std::span<const DemoSupplier> demoSuppliers() { return suppliers; }
std::span<const DemoProduct> demoProducts() { return products; }
std::span<const DemoEmployee> demoEmployees() { return employees; }
std::span<const DemoCustomer> demoCustomers() { return customers; }

} // namespace vellumo::samples
