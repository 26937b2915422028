PRAGMA foreign_keys = false;

DROP TABLE IF EXISTS "Customers";
CREATE TABLE "Customers" (
	"ID" INTEGER NOT NULL,
	"Name" TEXT NOT NULL,
	"Active" INTEGER,
	"Since" TEXT,
	"Balance" REAL,
	"Key" TEXT,
	PRIMARY KEY ("ID")
);

INSERT INTO "Customers" ("ID", "Name", "Active", "Since", "Balance", "Key") VALUES (1, 'O''Hara\\x', 1, '05/03/2014 21:07:00', 1234.5000, {12345678-ABCD-EF01-2345-67890ABCDEF0});
INSERT INTO "Customers" ("ID", "Name", "Active", "Since", "Balance", "Key") VALUES (2, '', 0, null, null, null);

DROP TABLE IF EXISTS "Orders";
CREATE TABLE "Orders" (
	"ID" INTEGER NOT NULL,
	"Line" INTEGER NOT NULL,
	"Customer" INTEGER,
	"Note" TEXT,
	"Pic" BLOB,
	"Ratio" REAL,
	PRIMARY KEY ("ID", "Line"),
	CONSTRAINT "CustomersOrders" FOREIGN KEY ("Customer") REFERENCES "Customers" ("ID") ON UPDATE CASCADE ON DELETE SET NULL
);

INSERT INTO "Orders" ("ID", "Line", "Customer", "Note", "Pic", "Ratio") VALUES (10, 1, 1, 'two
lines', x'00ff', 1.5);
INSERT INTO "Orders" ("ID", "Line", "Customer", "Note", "Pic", "Ratio") VALUES (10, 2, null, null, null, null);

CREATE UNIQUE INDEX "Name" ON "Customers" ("Name" ASC);
CREATE INDEX "orders_1" ON "Customers" ("Since" DESC, "Name" ASC);
CREATE INDEX "Name_1" ON "Orders" ("Note" ASC);
PRAGMA foreign_keys = true;
