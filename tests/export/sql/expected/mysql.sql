SET NAMES 'UTF8';
SET FOREIGN_KEY_CHECKS = 0;

DROP TABLE IF EXISTS `Customers` CASCADE;
CREATE TABLE `Customers` (
	`ID` int NOT NULL,
	`Name` varchar(50) NOT NULL COMMENT 'It''s \\ it',
	`Active` char,
	`Since` datetime,
	`Balance` float,
	`Key` varchar(16),
	PRIMARY KEY (`ID`),
	INDEX `Name` (`Name` ASC),
	INDEX `orders` (`Since` DESC, `Name` ASC)
);

INSERT INTO `Customers` (`ID`, `Name`, `Active`, `Since`, `Balance`, `Key`) VALUES (1, 'O''Hara\\x', 1, '2014-05-03 21:07:00', 1234.5000, '12345678ABCDEF01234567890ABCDEF0');
INSERT INTO `Customers` (`ID`, `Name`, `Active`, `Since`, `Balance`, `Key`) VALUES (2, '', 0, null, null, null);

DROP TABLE IF EXISTS `Orders` CASCADE;
CREATE TABLE `Orders` (
	`ID` int NOT NULL,
	`Line` int NOT NULL,
	`Customer` int,
	`Note` text(8000),
	`Pic` text(8000),
	`Ratio` float,
	PRIMARY KEY (`ID`, `Line`),
	INDEX `Name` (`Note` ASC)
);

INSERT INTO `Orders` (`ID`, `Line`, `Customer`, `Note`, `Pic`, `Ratio`) VALUES (10, 1, 1, 'two
lines', x'00ff', 1.5);
INSERT INTO `Orders` (`ID`, `Line`, `Customer`, `Note`, `Pic`, `Ratio`) VALUES (10, 2, null, null, null, null);

ALTER TABLE `Orders` ADD CONSTRAINT `CustomersOrders` FOREIGN KEY (`Customer`) REFERENCES `Customers` (`ID`) ON UPDATE CASCADE ON DELETE SET NULL;
SET FOREIGN_KEY_CHECKS = 1;
