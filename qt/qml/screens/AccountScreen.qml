// The account's own data.
import Fleetor

TablePage {
    tableName: "infoTableView"
}
