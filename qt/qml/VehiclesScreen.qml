// The list of the account's vehicles.
TablePage {}
