DROP TABLE IF EXISTS "sales"."Customers" CASCADE;
CREATE TABLE "sales"."Customers" (
	"ID" INTEGER NOT NULL,
	"Name" VARCHAR(50) NOT NULL,
	"Active" BOOL,
	"Since" TIMESTAMP WITHOUT TIME ZONE,
	"Balance" NUMERIC(15,2),
	"Key" UUID,
	CONSTRAINT "Customers_pkey" PRIMARY KEY ("ID")
);

CREATE UNIQUE INDEX "Name" ON "sales"."Customers" ("Name");
CREATE INDEX "orders" ON "sales"."Customers" ("Since", "Name");
COMMENT ON COLUMN "sales"."Customers"."Name" IS 'It''s \\ it';

INSERT INTO "sales"."Customers" ("ID", "Name", "Active", "Since", "Balance", "Key") VALUES (1, 'O''Hara\\x', '1', '2014-05-03 21:07:00', 1234.5000, '12345678-ABCD-EF01-2345-67890ABCDEF0');
INSERT INTO "sales"."Customers" ("ID", "Name", "Active", "Since", "Balance", "Key") VALUES (2, '', '0', null, null, null);

DROP TABLE IF EXISTS "sales"."Orders" CASCADE;
CREATE TABLE "sales"."Orders" (
	"ID" INTEGER NOT NULL,
	"Line" INTEGER NOT NULL,
	"Customer" INTEGER,
	"Note" TEXT,
	"Pic" BYTEA,
	"Ratio" DOUBLE PRECISION,
	CONSTRAINT "Orders_pkey" PRIMARY KEY ("ID", "Line")
);

CREATE INDEX "Name_1" ON "sales"."Orders" ("Note");

INSERT INTO "sales"."Orders" ("ID", "Line", "Customer", "Note", "Pic", "Ratio") VALUES (10, 1, 1, 'two
lines', x'00ff', 1.5);
INSERT INTO "sales"."Orders" ("ID", "Line", "Customer", "Note", "Pic", "Ratio") VALUES (10, 2, null, null, null, null);

ALTER TABLE "sales"."Orders" ADD CONSTRAINT "CustomersOrders" FOREIGN KEY ("Customer") REFERENCES "sales"."Customers" ("ID") ON UPDATE CASCADE ON DELETE SET NULL;
