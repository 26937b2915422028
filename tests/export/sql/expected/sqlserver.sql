BEGIN TRANSACTION
GO
IF EXISTS (SELECT * FROM sys.all_objects WHERE object_id = OBJECT_ID('[sales].[Customers]') AND type IN ('U'))
	DROP TABLE [sales].[Customers]
GO
CREATE TABLE [sales].[Customers] (
	[ID] int NOT NULL,
	[Name] varchar(50) NOT NULL,
	[Active] bit,
	[Since] smalldatetime,
	[Balance] money,
	[Key] Sybase_Replication ID,
	CONSTRAINT [Customers_pkey] PRIMARY KEY CLUSTERED ([ID]))
GO

CREATE UNIQUE INDEX [sales].[Name] ON [sales].[Customers] ([Name] ASC);
CREATE INDEX [sales].[orders] ON [sales].[Customers] ([Since] DESC, [Name] ASC);
EXEC sp_addextendedproperty 'MS_Description', 'It''s \ it', 'SCHEMA', 'sales', 'TABLE', 'Customers', 'COLUMN', 'Name'
GO

INSERT INTO [sales].[Customers] ([ID], [Name], [Active], [Since], [Balance], [Key]) VALUES (1, 'O''Hara\\x', 1, '2014-05-03 21:07:00', 1234.5000, {12345678-ABCD-EF01-2345-67890ABCDEF0});
GO
INSERT INTO [sales].[Customers] ([ID], [Name], [Active], [Since], [Balance], [Key]) VALUES (2, '', 0, null, null, null);
GO

IF EXISTS (SELECT * FROM sys.all_objects WHERE object_id = OBJECT_ID('[sales].[Orders]') AND type IN ('U'))
	DROP TABLE [sales].[Orders]
GO
CREATE TABLE [sales].[Orders] (
	[ID] int NOT NULL,
	[Line] smallint NOT NULL,
	[Customer] int,
	[Note] text,
	[Pic] varbinary,
	[Ratio] float,
	CONSTRAINT [Orders_pkey] PRIMARY KEY CLUSTERED ([ID], [Line]))
GO

CREATE INDEX [sales].[Name_1] ON [sales].[Orders] ([Note] ASC);

INSERT INTO [sales].[Orders] ([ID], [Line], [Customer], [Note], [Pic], [Ratio]) VALUES (10, 1, 1, 'two
lines', x'00ff', 1.5);
GO
INSERT INTO [sales].[Orders] ([ID], [Line], [Customer], [Note], [Pic], [Ratio]) VALUES (10, 2, null, null, null, null);
GO

ALTER TABLE [sales].[Orders] ADD CONSTRAINT [CustomersOrders] FOREIGN KEY ([Customer]) REFERENCES [sales].[Customers] ([ID]) ON UPDATE CASCADE ON DELETE SET NULL
GO
COMMIT
