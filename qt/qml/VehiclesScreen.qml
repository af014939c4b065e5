// The list of the account's vehicles.
import Fleetor

TablePage {}
