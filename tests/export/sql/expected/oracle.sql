DROP TABLE "sales"."Customers" CASCADE CONSTRAINTS;
CREATE TABLE "sales"."Customers" (
	"ID" NUMBER(11) NOT NULL,
	"Name" VARCHAR2(50) NOT NULL,
	"Active" NUMBER(1),
	"Since" TIMESTAMP,
	"Balance" NUMBER(15,2),
	"Key" NUMBER,
	PRIMARY KEY ("ID")
);

CREATE UNIQUE INDEX "sales"."Name" ON "sales"."Customers" ("Name" ASC);
CREATE INDEX "sales"."orders" ON "sales"."Customers" ("Since" DESC, "Name" ASC);
COMMENT ON COLUMN "sales"."Customers"."Name" IS 'It''s \\ it';

INSERT INTO "sales"."Customers" ("ID", "Name", "Active", "Since", "Balance", "Key") VALUES ('1', 'O''Hara\\x', '1', TO_DATE('05/03/2014 21:07:00', 'MM/DD/YYYY HH24:MI:SS'), '1234.5000', '{12345678-ABCD-EF01-2345-67890ABCDEF0}');
INSERT INTO "sales"."Customers" ("ID", "Name", "Active", "Since", "Balance", "Key") VALUES ('2', '', '0', null, null, null);

DROP TABLE "sales"."Orders" CASCADE CONSTRAINTS;
CREATE TABLE "sales"."Orders" (
	"ID" NUMBER(11) NOT NULL,
	"Line" NUMBER(5) NOT NULL,
	"Customer" NUMBER(11),
	"Note" CLOB,
	"Pic" BLOB,
	"Ratio" FLOAT,
	PRIMARY KEY ("ID", "Line")
);

CREATE INDEX "sales"."Name_1" ON "sales"."Orders" ("Note" ASC);

INSERT INTO "sales"."Orders" ("ID", "Line", "Customer", "Note", "Pic", "Ratio") VALUES ('10', '1', '1', 'two
lines', x'00ff', '1.5');
INSERT INTO "sales"."Orders" ("ID", "Line", "Customer", "Note", "Pic", "Ratio") VALUES ('10', '2', null, null, null, null);

ALTER TABLE "sales"."Orders" ADD CONSTRAINT "CustomersOrders" FOREIGN KEY ("Customer") REFERENCES "sales"."Customers" ("ID") ON DELETE SET NULL ENABLE;
