// The driver.
