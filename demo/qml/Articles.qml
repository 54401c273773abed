// SPDX-License-Identifier: MIT
pragma Singleton
import QtQuick

/// Today's edition.
QtObject {
    readonly property Article lead: Article {
        section: "Town"
        title: "After forty years, the harbour light turns again"
        summary: "Volunteers rebuilt the lens piece by piece. On Thursday, at dusk, they switched it on."
        author: "Ada Quill"
        minutes: 4
        picture: "pictures/lighthouse.png"
        caption: "The first beam since the winter the generator failed."
        body: "The lamp at Gull Rock went dark in the winter the old generator failed, and for forty years the rock was only a shape that pilots steered away from.\n\nThe lens lay in eleven crates in the cellar of the school. “We thought it was broken,” says Tove Lind, who found the crates while looking for chairs. “It was only dirty.” A clockmaker, two welders and a class of twelve-year-olds spent three winters cleaning and fitting the prisms.\n\nThe new lamp draws less power than a kettle. The beam reaches nineteen miles, which is two more than the chart promises, and the harbour master has already written to have the chart corrected.\n\nThe stair is open on Sundays. Take a coat, and do not hurry on the way down."
    }

    readonly property list<Article> others: [
        Article {
            section: "Sea"
            title: "The night ferry is back on the island run"
            summary: "Leave after supper, wake up to bread and seals: the slow boat returns in May."
            author: "Jonas Reve"
            minutes: 3
            picture: "pictures/ferry.png"
            caption: "The Morning Star has forty cabins and one very good cook."
            body: "For nine summers the only way to the outer islands was the fast boat at seven in the morning. From the first of May the Morning Star sails at night again.\n\nShe leaves the north quay at ten, takes the long way round the skerries and is alongside at six. A bunk costs less than lunch, and a bicycle travels free.\n\n“People asked for it every year,” says the ferry office. “This year they asked with a petition of four thousand names.”"
        },
        Article {
            section: "Food"
            title: "The baker who rises with the tide"
            summary: "At Kelp Street 4 the ovens are lit when the water turns, not when the clock says so."
            author: "Mina Oake"
            minutes: 5
            picture: "pictures/bakery.png"
            caption: "Gone by nine, most mornings."
            body: "Nils Farrow keeps no alarm clock. A tide table hangs by the bed, and when the water turns he goes down and lights the ovens.\n\nHis grandfather baked for the boats, and the boats left on the ebb. The boats are gone, but the dough, he says, has grown used to it.\n\nThe rye takes eighteen hours, the wheat six. The window is full by first light and empty by nine."
        },
        Article {
            section: "Nature"
            title: "A quiet spring for the eiders of Long Bay"
            summary: "The count is in: two hundred pairs, the most since anyone wrote it down."
            author: "Per Strand"
            minutes: 3
            picture: "pictures/eiders.png"
            caption: "Ducklings take to the water on their first day."
            body: "Every April four people with thermos flasks sit on the dunes of Long Bay and count ducks. This year they had to count twice, since nobody believed the number.\n\nTwo hundred and three pairs of eiders are nesting between the groynes. Ten years ago there were thirty.\n\nThe wardens credit a simple thing: the path now goes around the nesting ground instead of through it."
        },
        Article {
            section: "Town"
            title: "Line 5 reaches the old docks"
            summary: "Six stops, two bridges, and a view of the cranes from the left-hand seats."
            author: "Ada Quill"
            minutes: 2
            picture: "pictures/tram.png"
            caption: "Sit on the left."
            body: "The first tram to the old docks left Market Square at five past six on Monday with eleven passengers and a dog.\n\nThe line ends where the grain ships used to moor. Three of the warehouses are being turned into flats, one into a library, and one, for now, is left to the pigeons.\n\nTrams run every ten minutes until midnight."
        },
        Article {
            section: "Culture"
            title: "A thousand lanterns on the water"
            summary: "Bring a boat, or a friend who has one: lantern night is on Saturday."
            author: "Iris Vane"
            minutes: 2
            picture: "pictures/lanterns.png"
            caption: "Last year’s rehearsal, photographed from Rope Bridge."
            body: "On Saturday at nine the street lamps along the inner basin go out, and for one hour the water is lit by lanterns alone.\n\nThe paper for them was made at the mill upstream. The candles are stubs collected all winter by the cafés of the town.\n\nThe best places are on Rope Bridge. The very best are in a boat."
        }
    ]
}
